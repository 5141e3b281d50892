#pragma once

#include "vxshow/system/ForegroundProgram.h"
#include "vxshow/terminal/PagerChoice.h"
#include "vxshow/terminal/Screen.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace vxshow::terminal {

/// A terminal that shows a listing that is longer than its screen in a pager. The text is held
/// until it is known to be longer, or complete.
class PagedTerminal {
public:
    /// Without a pager, everything goes to `terminal` at once. When the pager is closed before it
    /// has everything, `closed` is called, after the pager has ended; it does not return. Nothing
    /// else ends the listing early: nobody would see the rest.
    PagedTerminal(int terminal, std::optional<PagerChoice> pager, std::function<void()> closed);

    /// Shows `text`, which is printable but for colours. To be called on a thread that blocks
    /// SIGPIPE. Returns why it cannot be written.
    std::error_code write(std::string_view text);

    /// Shows what is held, and waits until the pager is closed. Returns why it cannot be written.
    std::error_code finish();

private:
    void count(std::string_view text);
    std::error_code startPager();
    std::error_code writeToPager(std::string_view text);

    int terminal_;
    std::optional<PagerChoice> choice_; ///< nullopt once it is decided
    std::function<void()> closed_;
    ScreenSize size_;
    std::string held_;
    std::size_t lines_ = 0;  ///< of the screen that the held text takes, but for its last one
    std::size_t column_ = 0; ///< where the held text ends
    bool inColor_ = false;   ///< whether it ends within the control sequence of a colour
    std::optional<system::ForegroundProgram> pager_;
};

} // namespace vxshow::terminal
