#pragma once

#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/Facts.h"
#include "vxshow/sources/Findings.h"
#include "vxshow/sources/Source.h"
#include "vxshow/state/Selection.h"

namespace vxshow::sources::fabric {

/// What one source has told.
struct SourceReading {
    Facts state;
    Findings findings;
};

/// Reads what is selected of one source, whatever its kind. Raises `Failure`. May be
/// called on several threads at once.
SourceReading askOne(Source const & source, state::Selection const & selection,
                     Deadline const & deadline);

} // namespace vxshow::sources::fabric
