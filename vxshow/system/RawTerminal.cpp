#include "vxshow/system/RawTerminal.h"

#include <atomic>
#include <termios.h>
#include <unistd.h>

namespace vxshow::system {

namespace {

termios before{};
constinit std::atomic<bool> isChanged{false};
static_assert(std::atomic<bool>::is_always_lock_free);

} // namespace

bool RawTerminal::start() noexcept {
    if (isChanged) {
        return true;
    }
    if (::tcgetpgrp(STDIN_FILENO) != ::getpgrp() || ::tcgetattr(STDIN_FILENO, &before) != 0) {
        return false;
    }
    termios raw = before;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    raw.c_cc[VMIN] = 0;
    raw.c_cc[VTIME] = 0;
    isChanged = true;
    if (::tcsetattr(STDIN_FILENO, TCSANOW, &raw) != 0) {
        isChanged = false;
    }
    return isChanged;
}

void RawTerminal::restore() noexcept {
    if (isChanged.exchange(false)) {
        ::tcsetattr(STDIN_FILENO, TCSANOW, &before);
    }
}

} // namespace vxshow::system
