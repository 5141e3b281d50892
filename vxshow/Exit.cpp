#include "vxshow/Exit.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/time.h>
#include <unistd.h>

namespace vxshow {

namespace {

extern "C" void endInterrupted(int) {
    _exit(static_cast<int>(ExitStatus::interrupted));
}

} // namespace

void endInterruptedWithin(int milliseconds) noexcept {
    struct sigaction action {};

    action.sa_handler = endInterrupted;
    sigemptyset(&action.sa_mask);
    sigaction(SIGALRM, &action, nullptr);

    itimerval limit{};
    limit.it_value.tv_usec = suseconds_t{milliseconds} * 1000;
    setitimer(ITIMER_REAL, &limit, nullptr);
}

void exitNow(ExitStatus status) {
    std::fflush(stdout);
    std::_Exit(static_cast<int>(status));
}

} // namespace vxshow
