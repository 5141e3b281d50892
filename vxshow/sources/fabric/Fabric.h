#pragma once

#include "vxshow/sources/Source.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace vxshow::sources::fabric {

/// The live sources of a state.
struct Fabric {
    std::vector<Source> sources = {};
    /// The most time that reading all of them can take; none: each has only its own limit.
    std::optional<std::chrono::milliseconds> timeLimit = {};
    std::string_view timeLimitSetBy = fabricTimeLimit; ///< the option or the key: a constant
    /// What is odd about the fabric file, though it can be read: one line each, printable ASCII.
    std::vector<std::string> remarks = {};
};

} // namespace vxshow::sources::fabric
