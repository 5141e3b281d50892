#include "vxshow/terminal/PagedTerminal.h"

#include "vxshow/system/DescriptorIo.h"

#include <utility>

namespace vxshow::terminal {

PagedTerminal::PagedTerminal(int terminal, std::optional<PagerChoice> pager,
                             std::function<void()> closed)
    : terminal_(terminal), choice_(std::move(pager)), closed_(std::move(closed)),
      size_(screenSize(terminal)) {}

/// Counts the lines of the screen that `text` adds, with a column for each character, and none for
/// colour.
void PagedTerminal::count(std::string_view text) {
    for (char const c : text) {
        if (inColor_ || c == '\x1b') {
            inColor_ = c != 'm';
            continue;
        }
        if (c == '\n' || column_ == size_.columns) {
            ++lines_;
            column_ = 0;
        }
        bool const continues = (static_cast<unsigned char>(c) & 0xC0) == 0x80;
        column_ += c == '\n' || continues ? 0 : 1;
    }
}

std::error_code PagedTerminal::write(std::string_view text) {
    if (pager_) {
        return writeToPager(text);
    }
    if (!choice_) {
        return system::writeAll(terminal_, text);
    }
    count(text);
    held_.append(text);
    // The shell's prompt takes the last line of the screen.
    return lines_ + 1 > size_.lines ? startPager() : std::error_code();
}

std::error_code PagedTerminal::finish() {
    choice_.reset();
    auto const error = pager_ ? std::error_code() : system::writeAll(terminal_, held_);
    held_.clear();
    pager_.reset();
    return error;
}

/// If the pager cannot be started, the listing goes to the terminal.
std::error_code PagedTerminal::startPager() {
    auto const choice = *std::exchange(choice_, std::nullopt);
    auto const text = std::exchange(held_, {});
    try {
        pager_.emplace(choice.path, choice.words, choice.environment);
    } catch (std::system_error const &) {
        return system::writeAll(terminal_, text);
    }
    return writeToPager(text);
}

std::error_code PagedTerminal::writeToPager(std::string_view text) {
    auto const error = system::writeAll(pager_->input(), text);
    if (error == std::errc::broken_pipe && system::ForegroundProgram::wasAskedToEnd()) {
        return {};
    }
    if (error == std::errc::broken_pipe) {
        pager_.reset();
        closed_();
    }
    return error;
}

} // namespace vxshow::terminal
