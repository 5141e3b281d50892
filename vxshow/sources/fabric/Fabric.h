#pragma once

#include "vxshow/sources/Source.h"

#include <chrono>
#include <optional>
#include <vector>

namespace vxshow::sources::fabric {

/// The live sources of a state.
struct Fabric {
    std::vector<Source> sources = {};
    /// The most time that reading all of them can take; none: each has only its own limit.
    std::optional<std::chrono::milliseconds> timeLimit = {};
    std::string_view timeLimitSetBy = fabricTimeLimit; ///< the option or the key: a constant
};

} // namespace vxshow::sources::fabric
