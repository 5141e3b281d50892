#include "vxshow/sources/fabric/Readers.h"

#include <algorithm>
#include <pthread.h>
#include <system_error>
#include <utility>

namespace vxshow::sources::fabric {

namespace {

/// Less is what a thread uses to look at the clock while it waits.
constexpr std::chrono::milliseconds leastUse{1};

} // namespace

Readers::Readers(std::function<void()> work, std::size_t atOnce, std::size_t most)
    : work_(std::move(work)), atOnce_(atOnce), most_(std::max(atOnce, most)) {
    readers_.reserve(most_);
    fill();
}

void Readers::fill() {
    auto const now = Clock::now();
    auto const reading = std::count_if(readers_.begin(), readers_.end(),
                                       [&](Reader & reader) { return !isWaiting(reader, now); });
    for (auto busy = static_cast<std::size_t>(reading);
         busy < atOnce_ && readers_.size() < most_ && start(); ++busy) {
    }
}

/// A thread that has ended uses nothing either. Then no source is left, so one that takes its place
/// ends at once.
bool Readers::isWaiting(Reader & reader, Clock::time_point now) {
    timespec time{};
    if (::clock_gettime(reader.clock, &time) == 0) {
        auto const used =
            std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
        if (used - reader.used >= leastUse) {
            reader.used = used;
            reader.since = now;
        }
    }
    return now - reader.since > longestPause;
}

bool Readers::start() {
    try {
        Reader reader{std::jthread(work_), {}, {}, Clock::now()};
        if (::pthread_getcpuclockid(reader.thread.native_handle(), &reader.clock) != 0) {
            reader.clock = CLOCK_MONOTONIC;
        }
        readers_.push_back(std::move(reader));
        return true;
    } catch (std::system_error const &) {
        return false;
    }
}

} // namespace vxshow::sources::fabric
