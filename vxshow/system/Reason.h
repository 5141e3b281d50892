#pragma once

#include "vxshow/system/Run.h"

#include <chrono>
#include <string>

namespace vxshow::system {

/// Why a run of `program`, its first word, was of no use, as one line of printable ASCII:
///
///     no such program: vtysh
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
/// Where the program has ended with an exit status, its own words come first: the first line of
/// its standard error that is not blank, cut after 300 bytes, with three dots for the rest.
/// `limit` is the time that it had, which the answer does not know.
std::string reason(Answer const & answer, std::string const & program,
                   std::chrono::milliseconds limit);

} // namespace vxshow::system
