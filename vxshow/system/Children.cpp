#include "vxshow/system/Children.h"

#include "vxshow/system/ChildSlot.h"
#include "vxshow/system/ForegroundProgram.h"
#include "vxshow/system/RawTerminal.h"

#include <csignal>

namespace vxshow::system {

namespace {

// On entry the signal has its default action again (SA_RESETHAND) and is blocked until the handler
// returns; then the raised signal ends the process.
extern "C" void killChildrenAndEnd(int signal) {
    killAllChildren();
    static_cast<void>(std::raise(signal));
}

} // namespace

void killAllChildren() noexcept {
    ChildSlot::killAll();
    ForegroundProgram::endRunning();
    RawTerminal::restore();
}

void killChildrenOnTermination() {
    for (int const signal : {SIGHUP, SIGQUIT, SIGTERM}) {
        struct sigaction action {};

        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN) {
            continue;
        }
        action = {};
        action.sa_handler = killChildrenAndEnd;
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigemptyset(&action.sa_mask);
        sigaction(signal, &action, nullptr);
    }
}

} // namespace vxshow::system
