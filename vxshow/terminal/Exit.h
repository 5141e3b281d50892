#pragma once

namespace vxshow::terminal {

/// The exit statuses that scripts rely on.
enum class ExitStatus : int {
    success = 0,
    failed = 1,       ///< the state could not be read, or the output not written
    usage = 2,        ///< the command line is invalid
    incomplete = 3,   ///< a live source could not be read; the others are shown
    unknownName = 4,  ///< shown; the state does not have a name that a filter asks for
    interrupted = 130 ///< by the user: 128 plus the number of SIGINT
};

/// Kills the child processes, flushes standard output and ends the process. No destructor runs:
/// the system frees millions of objects faster than their destructors would.
[[noreturn]] void exitNow(ExitStatus status);

} // namespace vxshow::terminal
