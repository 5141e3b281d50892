#include "vxshow/cli/completion/ProcessorTimeLimit.h"

#include <csignal>
#include <sys/time.h>
#include <unistd.h>

namespace vxshow::cli::completion {

namespace {

void setTimer(std::chrono::milliseconds time) {
    constexpr int millisecondsPerSecond = 1000;
    constexpr int microsecondsPerMillisecond = 1000;
    itimerval timer{};
    timer.it_value.tv_sec = time.count() / millisecondsPerSecond;
    timer.it_value.tv_usec = time.count() % millisecondsPerSecond * microsecondsPerMillisecond;
    setitimer(ITIMER_PROF, &timer, nullptr);
}

} // namespace

ProcessorTimeLimit::ProcessorTimeLimit(std::chrono::milliseconds time) {
    std::signal(SIGPROF, [](int) { _exit(0); });
    setTimer(time);
}

ProcessorTimeLimit::~ProcessorTimeLimit() {
    setTimer(std::chrono::milliseconds(0));
}

} // namespace vxshow::cli::completion
