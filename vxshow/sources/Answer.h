#pragma once

#include "vxshow/sources/Facts.h"
#include "vxshow/sources/Findings.h"

namespace vxshow::sources {

/// What one source answered, whatever its kind.
struct Answer {
    Facts facts; ///< settled
    Findings findings;
    /// Whether its parts are consistent with one another. A source that takes several queries can
    /// change between them; what no longer fits is left out of the facts, and asking again helps.
    bool fits = true;
};

} // namespace vxshow::sources
