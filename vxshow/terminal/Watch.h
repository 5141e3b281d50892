#pragma once

#include "vxshow/system/FileBytes.h"
#include "vxshow/terminal/Exit.h"
#include "vxshow/terminal/LineColors.h"
#include "vxshow/terminal/TerminalText.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vxshow::terminal {

/// What there is to show at one moment.
struct View {
    system::FileBytes text;
    /// Remarks on the sources: printable ASCII; each can have several lines.
    std::vector<std::string> remarks = {};
    /// The exit status if the user ends watching now.
    ExitStatus status = ExitStatus::success;
    /// What comes before the text in a pipe or a file; `failure` is why it could not be read again,
    /// or empty. Null: nothing comes before it.
    std::function<std::string(std::string const & failure)> head = {};
    Tables tables = Tables::aligned;       ///< on a terminal
    std::optional<Coloring> coloring = {}; ///< on a terminal; nullopt: it has no colour at all
};

/// Reads the state and makes a view of it. `meanwhile` is to be called from time to time.
using ReadView = std::function<View(std::function<void()> const & meanwhile)>;

/// Shows what `read` returns, waits for `interval`, and starts over, until the process is
/// interrupted, or `q` is typed. `title` says what is shown: "mac received".
///
/// On a terminal the screen is redrawn in place: a line with the title, the interval and the
/// time of the reading, then the remarks, then as much of the text as fits, with the control
/// characters in it replaced. The arrow keys, PgUp, PgDn, Home and End show other parts of it.
/// Elsewhere each text follows the last, whole and byte for byte, and the remarks go to standard
/// error.
///
/// When `read` throws, the message is shown as a remark, and the last good text stays with the
/// time at which it was read; without one, there is no text. The process ends with
/// `ExitStatus::failed` when standard output cannot be written.
[[noreturn]] void watch(std::string const & title, std::chrono::seconds interval,
                        ReadView const & read);

} // namespace vxshow::terminal
