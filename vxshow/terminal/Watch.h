#pragma once

#include "vxshow/system/FileBytes.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace vxshow::terminal {

/// What there is to show at one moment.
struct View {
    system::FileBytes text;
    /// Remarks on the sources: printable ASCII; each can have several lines.
    std::vector<std::string> remarks = {};
};

/// Shows what `read` returns, waits for `interval`, and starts over, until the process is
/// interrupted. `title` says what is shown: "mac received".
///
/// On a terminal the screen is redrawn in place: a line with the title, the interval and the
/// time of the reading, then the remarks, then as much of the text as fits, with the control
/// characters in it replaced. Elsewhere each text follows the last, whole and byte for byte,
/// and the remarks go to standard error.
///
/// When `read` throws, the message is shown as a remark, and the last good text stays with the
/// time at which it was read. Only the first reading must succeed: if it throws, the message goes
/// to standard error and the process ends with `ExitStatus::failed`. It also ends like that when
/// standard output cannot be written.
[[noreturn]] void watch(std::string const & title, std::chrono::seconds interval,
                        std::function<View()> const & read);

} // namespace vxshow::terminal
