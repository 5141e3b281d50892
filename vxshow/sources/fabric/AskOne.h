#pragma once

#include "vxshow/sources/Answer.h"
#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/Source.h"
#include "vxshow/state/Selection.h"

namespace vxshow::sources::fabric {

/// Reads what is selected of one source, whatever its kind. Raises `Failure`. May be
/// called on several threads at once.
Answer askOne(Source const & source, state::Selection const & selection, Deadline const & deadline);

} // namespace vxshow::sources::fabric
