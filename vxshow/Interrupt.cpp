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

extern "C" void endAtOnce(int) {
    constexpr char text[] = "exiting on interrupt\n";
    if (canWriteAtOnce(STDOUT_FILENO)) {
        [[maybe_unused]] auto const written = write(STDOUT_FILENO, text, sizeof(text) - 1);
    }
    _exit(static_cast<int>(ExitStatus::interrupted));
}

extern "C" void askTheLibrary(int) {
    outfmt::requestInterrupt();
}

} // namespace

InterruptHandling::InterruptHandling() {
    handleWith(endAtOnce);
}

void InterruptHandling::rendering() {
    handleWith(askTheLibrary);
}

bool InterruptHandling::rendered() {
    handleWith(endAtOnce);
    return outfmt::interruptRequested();
}

} // namespace vxshow
