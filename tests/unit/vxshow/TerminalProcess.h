#pragma once

#include <functional>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

/// A running `vxshow` with a terminal of its own, which sends it Ctrl-C and the like.
class TerminalProcess {
public:
    struct Setting {
        unsigned short lines = 24;
        unsigned short columns = 80;
        /// Variables of its environment; those with an empty value are not set. `TERM` is
        /// "xterm", `NO_COLOR` is set and `PAGER` is not unless they are here.
        std::vector<std::pair<std::string, std::string>> environment = {};
    };

    TerminalProcess(std::vector<std::string> const & arguments, Setting const & setting);
    ~TerminalProcess();
    TerminalProcess(TerminalProcess const &) = delete;
    TerminalProcess & operator=(TerminalProcess const &) = delete;

    pid_t pid() const noexcept { return pid_; }

    /// Sends keys; "\x03" is Ctrl-C.
    void type(std::string const & keys) const;

    /// Reads until `text` is on the terminal; after a minute the test fails. Returns all that has
    /// been drawn so far.
    std::string const & waitFor(std::string const & text);

    /// Waits until the program has ended, for at most a minute. Returns its exit status, or 128 and
    /// the number of the signal that ended it.
    int finish();

    /// What has been drawn, with the line ends of a file.
    std::string drawn() const;

private:
    bool readSome(int milliseconds);

    int terminal_ = -1;
    pid_t pid_ = -1;
    std::string drawn_;
};
