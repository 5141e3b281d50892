#pragma once

#include "vxshow/system/Run.h"

#include <chrono>
#include <string>

namespace vxshow::system {

/// A time in seconds, without trailing zeros: "5", "0.5".
std::string secondsText(std::chrono::milliseconds time);

/// Says in one line of printable ASCII why a run of `program` (its first word) failed (the second
/// is one line, too):
///
///     no such program: vtysh
///     no such program: vtysh (found only in an empty or relative entry of PATH, which root does
///         not use)
///     permission: /x/y cannot be run
///     no such program: vtysh/x cannot be run: Not a directory
///     unreachable: vtysh cannot be run: Too many open files
///     time limit: no answer within 0.5 s
///     broken answer: more than 1000 bytes
///     broken answer: vtysh was killed by signal 9 (Killed)
///     Exiting: failed to connect to any daemons.
///     vtysh ended with exit status 1
///     interrupted
///
/// If the program ended with an exit status, the line is the first line of its standard error that
/// is not blank, cut after 300 bytes with "..." in place of the rest, if there is one. `limit` is
/// the time limit of the run, which the result does not hold.
std::string reason(RunResult const & result, std::string const & program,
                   std::chrono::milliseconds limit);

} // namespace vxshow::system
