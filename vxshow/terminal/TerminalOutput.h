#pragma once

#include "vxshow/system/OwnedDescriptor.h"
#include "vxshow/terminal/LineColors.h"
#include "vxshow/terminal/PagedTerminal.h"
#include "vxshow/terminal/TerminalText.h"

#include <functional>
#include <optional>
#include <system_error>
#include <thread>

namespace vxshow::terminal {

/// Takes a listing to a terminal, as `TerminalText` shows it.
///
/// The listing goes through a pipe to a thread that writes it. The pipe holds one page, so that
/// little is still on the way when an interrupt ends the listing.
class TerminalOutput {
public:
    /// With a pager, a listing that is longer than the screen is shown in it; when it is closed
    /// early, `closed` is called as `PagedTerminal` says. `coloring` says which lines have colour.
    /// Raises `std::system_error` if the system refuses a pipe or a thread.
    explicit TerminalOutput(int terminal, std::optional<PagerChoice> pager = {},
                            std::function<void()> closed = {}, Tables tables = Tables::aligned,
                            Coloring coloring = Coloring::none);

    TerminalOutput(TerminalOutput const &) = delete;
    TerminalOutput & operator=(TerminalOutput const &) = delete;

    /// As `finish`, but ignores a failure to write to the terminal.
    ~TerminalOutput();

    /// The descriptor to write to.
    int descriptor() const noexcept { return writer_.number(); }

    /// Waits until everything is written, and the pager is closed; nothing can be written
    /// afterwards. Raises `std::system_error` if the terminal did not take all of it.
    void finish();

    /// Whether the last byte that went to the terminal was not a line end. Call it after `finish`.
    bool endsWithinLine() const noexcept { return last_ != '\n'; }

private:
    void copyToTerminal() noexcept;

    PagedTerminal terminal_;
    Tables tables_;
    LineColors colors_;
    char last_ = '\n';      ///< the last byte written
    std::error_code error_; ///< why the terminal took no more
    system::OwnedDescriptor reader_;
    system::OwnedDescriptor writer_;
    std::thread copying_;
};

} // namespace vxshow::terminal
