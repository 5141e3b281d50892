#pragma once

#include "vxshow/system/FileBytes.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// Other programs, run for what they print.
///
/// A program is a list of words: the first is looked up along the PATH as a shell would, the
/// others are its arguments, byte for byte; no shell sees any of them. It has our environment
/// and folder, nothing on its standard input, none of our descriptors, signals as a program
/// expects them, and a session and process group of its own without a terminal: what would
/// ask there for a password fails at once. Neither it nor what it started in that group
/// outlives the call; what it has put in a session of its own does, and so does what runs as
/// another user whom this one may not signal, as under sudo: that is not waited for. Should
/// this process be killed, so is it. Any number of threads may call at once.
namespace vxshow::system {

using Clock = std::chrono::steady_clock;

struct Limits {
    Clock::time_point end;   ///< then it is killed; one that has passed starts nothing
    std::size_t outputBytes; ///< more than so many on standard output kill it
};

/// It ended by itself.
struct Exited {
    int status = 0;
    FileBytes output; ///< all of its standard output
    std::string
        errors; ///< the end of its standard error: 4096 bytes at most, whole lines if any is
};

/// A signal that we did not send ended it.
struct Killed {
    int signal;
    std::string errors; ///< as of `Exited`
};

/// At `Limits::end` it was not at its end (see `run`), or 256 others, as many as may at once,
/// had run until then.
struct TimeLimit {};

struct OutputLimit {
    std::size_t bytes = 0; ///< as many were allowed: `Limits::outputBytes`
};

/// It could not be started; the error number of the system: ENOENT where there is no such
/// program, EACCES where it must not be run, EINVAL where there are no words or one of them has
/// a zero byte, which no program can be given, or one of many others. Too few descriptors or
/// processes are an error only when no other program of ours runs, or until `Limits::end` those
/// that run have left too few.
struct NotRun {
    int error;
};

/// `killAllChildren` (vxshow/system/Children.h) ended it or kept it from starting. There is
/// nothing to say about it: this process is about to end.
struct Interrupted {};

using Answer = std::variant<Exited, Killed, TimeLimit, OutputLimit, NotRun, Interrupted>;

/// Runs it to its end. `received` is called, on this thread, with the bytes of each piece of
/// its standard output as it comes, but for a piece that goes beyond the limit.
///
/// It is at its end when it has ended and nobody holds its output and its standard error open
/// any more. Some programs leave others behind who do, as one that goes to the background:
/// once nothing has come for 200 ms after its own end, those are not waited for.
///
/// It is killed when the thread that calls this ends, which can only be with the process. While
/// SIGCHLD is ignored the system keeps no exit statuses; it is set to its default. Raises
/// `std::bad_alloc`, `std::system_error` when the output cannot be read, and what `received`
/// raises; also then nothing of the program is left.
Answer run(std::vector<std::string> const & words, Limits const & limits,
           std::function<void(std::string_view)> const & received = {});

} // namespace vxshow::system
