#pragma once

#include "vxshow/sources/Deadline.h"
#include "vxshow/sources/Facts.h"
#include "vxshow/sources/Findings.h"
#include "vxshow/sources/Source.h"
#include "vxshow/state/Selection.h"

namespace vxshow::sources::fabric {

/// What one source has told.
struct SourceReading {
    SourceState state;
    SourceFindings findings;
};

/// Reads what is selected of one source, whatever its kind. Raises `SourceFailure`. May be
/// called on several threads at once.
SourceReading askOne(LiveSource const & source, state::Selection const & selection,
                     Deadline const & deadline);

} // namespace vxshow::sources::fabric
