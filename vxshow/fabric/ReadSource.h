#pragma once

#include "vxshow/fabric/LiveSource.h"
#include "vxshow/mount/Selection.h"
#include "vxshow/mount/live/Deadline.h"
#include "vxshow/mount/live/SourceFindings.h"
#include "vxshow/mount/live/SourceState.h"

namespace vxshow {

/// What one source has told.
struct SourceReading {
    SourceState state;
    SourceFindings findings;
};

/// Reads what is selected of one source, whatever its kind. Raises `SourceFailure`. May be
/// called on several threads at once.
SourceReading readSource(LiveSource const & source, Selection const & selection,
                         Deadline const & deadline);

} // namespace vxshow
