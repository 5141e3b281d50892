#include "vxshow/Interrupt.h"

#include "outfmt/Interrupt.h"
#include "vxshow/Exit.h"

#include <csignal>
#include <unistd.h>

namespace vxshow {

namespace {

// Without SA_RESTART, so that a write that waits for a slow reader returns at once.
void handleWith(void (*handler)(int)) {
    struct sigaction old {};

    if (sigaction(SIGINT, nullptr, &old) != 0 || old.sa_handler == SIG_IGN) {
        return;
    }

    struct sigaction action {};

    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
}

extern "C" void endTheProcess(int) {
    constexpr char text[] = "exiting on interrupt\n";
    endInterruptedWithin(50);
    [[maybe_unused]] auto const written = write(STDOUT_FILENO, text, sizeof(text) - 1);
    _exit(static_cast<int>(ExitStatus::interrupted));
}

// The library says its last line through a standard stream, which waits for a terminal
// that is held; the limit is for that case alone.
extern "C" void endTheListing(int) {
    outfmt::requestInterrupt();
    endInterruptedWithin(250);
}

} // namespace

void interruptEndsTheProcess() {
    handleWith(endTheProcess);
}

void interruptEndsTheListing() {
    handleWith(endTheListing);
}

} // namespace vxshow
