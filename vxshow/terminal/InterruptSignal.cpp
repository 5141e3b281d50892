#include "vxshow/terminal/InterruptSignal.h"

#include "outfmt/Interrupt.h"
#include "vxshow/system/Children.h"
#include "vxshow/terminal/Exit.h"

#include <csignal>
#include <cstdio>
#include <sys/time.h>
#include <unistd.h>

namespace vxshow::terminal {

namespace {

constexpr suseconds_t tickMicroseconds = 30'000;
constexpr int mostTicks = 12;

volatile std::sig_atomic_t ticks = 0;
volatile std::sig_atomic_t ticksSinceTaken = 0;

[[noreturn]] void endInterrupted() {
    system::killAllChildren();
    _exit(static_cast<int>(ExitStatus::interrupted));
}

// Without SA_RESTART, so that a write that waits for a slow reader returns at once.
void handle(int signal, void (*handler)(int)) {
    struct sigaction action {};

    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

void startTicking(void (*tick)(int)) {
    handle(SIGALRM, tick);
    timeval const period{0, tickMicroseconds};
    itimerval const timer{period, period};
    setitimer(ITIMER_REAL, &timer, nullptr);
}

extern "C" void giveUp(int) {
    endInterrupted();
}

// The line is written to a reader that may never take it; the timer ends the wait.
extern "C" void endTheProcess(int) {
    constexpr char text[] = "exiting on interrupt\n";
    startTicking(giveUp);
    [[maybe_unused]] auto const written = write(STDOUT_FILENO, text, sizeof(text) - 1);
    endInterrupted();
}

// Once the library has met the interrupt, it says its line and takes apart what it has
// collected, which for millions of entries nobody should wait for. The line has a whole
// tick to get out; where it does not, the terminal is held.
extern "C" void endLateListing(int) {
    ticks = ticks + 1;
    if (outfmt::interruptTaken()) {
        ticksSinceTaken = ticksSinceTaken + 1;
    }
    if (ticksSinceTaken > 1 || ticks > mostTicks) {
        endInterrupted();
    }
}

extern "C" void endTheListing(int) {
    outfmt::requestInterrupt();
    startTicking(endLateListing);
}

/// Unless the program was started with the signal ignored, as a background job is.
void onInterrupt(void (*handler)(int)) {
    struct sigaction old {};

    if (sigaction(SIGINT, nullptr, &old) == 0 && old.sa_handler != SIG_IGN) {
        handle(SIGINT, handler);
    }
}

} // namespace

void interruptEndsTheProcess() {
    onInterrupt(endTheProcess);
}

void interruptEndsTheListing() {
    onInterrupt(endTheListing);
}

} // namespace vxshow::terminal
