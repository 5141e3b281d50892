#pragma once

#include "vxshow/sources/Failure.h"
#include "vxshow/system/FileBytes.h"
#include "vxshow/system/Run.h"

#include <chrono>
#include <string>

namespace vxshow::sources::frr {

/// Identifies a run of `vtysh` in error messages.
struct VtyshRun {
    std::string program;                 ///< its first word
    std::chrono::milliseconds timeLimit; ///< for the whole answer
};

/// What `vtysh` printed in a run that ended well: with status 0, or with a complaint about a
/// command at the end of its output, since that takes the place of an answer. A warning that it
/// has no configuration file is not a complaint. Raises `Failure`: standard error shows whether
/// the daemon could not be reached, or whether access was denied.
system::FileBytes vtyshOutput(system::RunResult answer, VtyshRun const & about);

} // namespace vxshow::sources::frr
