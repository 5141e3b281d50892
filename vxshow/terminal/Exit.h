#pragma once

namespace vxshow::terminal {

/// The exit statuses that scripts rely on.
enum class ExitStatus : int {
    success = 0,
    failed = 1,       ///< the state cannot be read, or the output not written
    usage = 2,        ///< the command line cannot be obeyed
    incomplete = 3,   ///< a live source could not be read; the others are shown
    interrupted = 130 ///< by the user: 128 and the number of SIGINT
};

/// Ends the process, and the programs that it runs. What stands in the standard streams is
/// written; nothing else is put in order: the system takes millions of objects back faster
/// than their destructors do.
[[noreturn]] void exitNow(ExitStatus status);

} // namespace vxshow::terminal
