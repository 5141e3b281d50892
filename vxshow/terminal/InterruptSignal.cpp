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
constexpr int maxTicks = 12;

volatile std::sig_atomic_t ticks = 0;
volatile std::sig_atomic_t ticksSinceHandled = 0; // since the library has seen the interrupt

[[noreturn]] void exitInterrupted() {
    system::killAllChildren();
    _exit(static_cast<int>(ExitStatus::interrupted));
}

// Without SA_RESTART, so that a write that waits for a slow reader returns at once.
void setHandler(int signal, void (*handler)(int)) {
    struct sigaction action {};

    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    sigaction(signal, &action, nullptr);
}

void startTimer(void (*tick)(int)) {
    setHandler(SIGALRM, tick);
    timeval const period{0, tickMicroseconds};
    itimerval const timer{period, period};
    setitimer(ITIMER_REAL, &timer, nullptr);
}

extern "C" void stopWriting(int) {
    exitInterrupted();
}

// The reader of the line may never take it: the timer ends the wait.
extern "C" void endProcess(int) {
    constexpr char text[] = "exiting on interrupt\n";
    startTimer(stopWriting);
    [[maybe_unused]] auto const written = write(STDOUT_FILENO, text, sizeof(text) - 1);
    exitInterrupted();
}

// After an interrupt the library writes its last line and destroys what it has collected. For
// millions of entries that takes longer than a user should wait, so the process ends here. The
// line has a whole tick to get out; if it takes longer, the terminal is blocked.
extern "C" void endLateListing(int) {
    ticks = ticks + 1;
    if (outfmt::interruptTaken()) {
        ticksSinceHandled = ticksSinceHandled + 1;
    }
    if (ticksSinceHandled > 1 || ticks > maxTicks) {
        exitInterrupted();
    }
}

extern "C" void endListing(int) {
    outfmt::requestInterrupt();
    startTimer(endLateListing);
}

/// Sets the handler, unless the program was started with SIGINT ignored, as background jobs are.
void onInterrupt(void (*handler)(int)) {
    struct sigaction old {};

    if (sigaction(SIGINT, nullptr, &old) == 0 && old.sa_handler != SIG_IGN) {
        setHandler(SIGINT, handler);
    }
}

} // namespace

void exitOnInterrupt() {
    onInterrupt(endProcess);
}

void endListingOnInterrupt() {
    onInterrupt(endListing);
}

} // namespace vxshow::terminal
