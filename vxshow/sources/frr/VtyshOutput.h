#pragma once

#include "vxshow/sources/Failure.h"
#include "vxshow/system/FileBytes.h"
#include "vxshow/system/Run.h"

#include <chrono>
#include <string>

namespace vxshow::sources::frr {

/// What a run of `vtysh` is told apart by when it fails.
struct VtyshRun {
    std::string program;               ///< its first word
    system::Clock::duration timeLimit; ///< for the whole answer
};

/// To a hundredth of a second, since some of the time has passed when it is measured; what is
/// less than that, to the next millisecond.
std::chrono::milliseconds shownLimit(system::Clock::duration limit);

/// What `vtysh` printed, of a run that ended as it should: status 0, or with a complaint about
/// a command at the end of what it printed, since that stands in its place among the answers.
/// Its warning that it has no configuration file is none. Raises `Failure`: what is told
/// on standard error tells whether the daemon could not be reached, or may not be.
system::FileBytes vtyshOutput(system::Answer answer, VtyshRun const & about);

} // namespace vxshow::sources::frr
