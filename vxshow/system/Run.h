#pragma once

#include "vxshow/system/FileBytes.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// Running other programs and collecting their output.
///
/// A program is a list of words: the first is looked up along PATH, the others are its arguments,
/// byte for byte; no shell is involved. If this process runs as root, empty and relative entries of
/// PATH are skipped, so that nothing in the current folder is run by accident. The program inherits
/// the environment and the working folder. Its standard input is empty, none of this process's
/// descriptors are open in it, and all signals have their default action. It runs in its own
/// session and process group without a terminal, so a prompt for a password fails at once.
///
/// Neither the program nor its process group outlives the call. Processes that it has put in
/// another session do, and so do processes of a user that this one has no permission to signal,
/// as under sudo; neither are waited for. If this process is killed, so is the program. Any number
/// of threads can call `run` at once.
namespace vxshow::system {

using Clock = std::chrono::steady_clock;

struct Limits {
    Clock::time_point end;   ///< when it is killed; if already past, nothing is started
    std::size_t outputBytes; ///< it is killed if it writes more to standard output
};

/// The program ended by itself.
struct Exited {
    int status = 0;
    FileBytes output; ///< all of its standard output
    /// The end of its standard error: at most 4096 bytes, and only whole lines unless the last line
    /// alone is longer.
    std::string errors;
};

/// A signal ended the program; this process did not send it.
struct KilledBySignal {
    int signal;
    std::string errors; ///< as in `Exited`
};

/// The program had not finished (see `run`) at `Limits::end`, or could not start before that,
/// because 256 others, the most that run at the same time, were running.
struct TimeLimitReached {};

struct OutputLimitReached {
    std::size_t bytes = 0; ///< the limit: `Limits::outputBytes`
};

/// The program could not be started. The error number is ENOENT if there is no such program, EACCES
/// if there is no permission to run it, EINVAL if there are no words or one has a zero byte, or any
/// other of the system. A lack of descriptors or processes is an error only if no other program of
/// this process is running, or if the lack lasts until `Limits::end`.
struct NotStarted {
    int error;
    /// Whether it was found, but only in an empty or relative entry of PATH, and this process runs
    /// as root. The error is then ENOENT.
    bool onlyInRelativeEntry = false;
};

/// `killAllChildren` (vxshow/system/Children.h) killed it or prevented its start: this process is
/// about to end.
struct Interrupted {};

using RunResult = std::variant<Exited, KilledBySignal, TimeLimitReached, OutputLimitReached,
                               NotStarted, Interrupted>;

/// Runs a program until it has finished. `received` is called on this thread with each piece of its
/// standard output as it arrives, except a piece that exceeds the limit.
///
/// The program has finished when it has ended and no process holds its standard output or standard
/// error open. Some programs leave such processes behind, as one that goes to the background does:
/// once nothing has arrived for 200 ms after the program's own end, they are not waited for.
///
/// If SIGCHLD is ignored it is set to its default, since the system would otherwise keep no exit
/// statuses. Raises `std::bad_alloc`, `std::system_error` if the output cannot be read, and what
/// `received` raises; in these cases, too, the program is killed and reaped.
RunResult run(std::vector<std::string> const & words, Limits const & limits,
              std::function<void(std::string_view)> const & received = {});

} // namespace vxshow::system
