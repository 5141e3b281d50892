#pragma once

#include "vxshow/system/OwnedDescriptor.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace vxshow::system {

/// A running program that has the terminal together with this process, such as a pager: it writes
/// to the same standard output and standard error, stays in the process group that the terminal
/// sends its signals to, and reads what this process writes to it. There is at most one at a time.
///
/// It can have changed the settings of the terminal, so it is asked to end (SIGTERM) before it is
/// killed.
class ForegroundProgram {
public:
    /// Starts the program in the file `path`, which has a slash, with the words `words`: the first
    /// is its name for itself. The environment is that of this process and `environment`, texts
    /// such as "LESS=FRX". Raises `std::system_error`.
    ForegroundProgram(std::string const & path, std::vector<std::string> const & words,
                      std::vector<std::string> const & environment);

    ForegroundProgram(ForegroundProgram const &) = delete;
    ForegroundProgram & operator=(ForegroundProgram const &) = delete;

    /// As `wait`.
    ~ForegroundProgram();

    /// The writing end of its standard input. A thread that writes to it must block SIGPIPE: then a
    /// program that reads no more is EPIPE.
    int input() const noexcept { return input_.number(); }

    /// Ends its input, and waits until the program has ended.
    void wait() noexcept;

    /// Asks the program that is running to end, and kills it if it is still there after a second.
    /// Async-signal-safe.
    static void endRunning() noexcept;

    /// Whether `endRunning` was called, as this process is about to end: then a program that reads
    /// no more was not closed by the user.
    static bool wasAskedToEnd() noexcept;

private:
    OwnedDescriptor input_;
    pid_t pid_ = -1;
};

} // namespace vxshow::system
