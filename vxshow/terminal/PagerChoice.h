#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vxshow::terminal {

/// How a pager is started.
struct PagerChoice {
    std::string path; ///< of the program
    std::vector<std::string> words;
    std::vector<std::string> environment = {}; ///< additions to it, such as "LESS=FRX"
    bool showsColor = true; ///< false: less, with options in LESS that let no colour through

    bool operator==(PagerChoice const &) const = default;
};

/// The pager that the environment names: `PAGER`, or `configured` if it is not set, or `less -FRX`
/// without either. If the command is more than plain words, the shell runs it. `less` gets these
/// options in `LESS`, too, if that is not set. Nullopt if the command is empty or "cat", the
/// terminal is a simple one (`TERM` is "dumb" or not set), the program is not there, or this
/// process is not in the foreground of the terminal that `descriptor` leads to: a pager could not
/// read keys there.
std::optional<PagerChoice> choosePager(int descriptor,
                                       std::optional<std::string> const & configured = {});

} // namespace vxshow::terminal
