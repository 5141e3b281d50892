#include "tests/unit/vxshow/sources/CountedClock.h"

#include <algorithm>
#include <chrono>

namespace vxshow::test {

using sources::Deadline;

namespace {

struct Counts {
    std::size_t looks = 0;
    std::size_t looksBeforeEnd = 0;
    std::size_t work = 0;
    std::size_t mostWork = 0;
};

thread_local Counts counts;

Deadline::Clock::time_point countedNow() {
    counts.work = 0;
    return ++counts.looks > counts.looksBeforeEnd ? Deadline::Clock::time_point::max()
                                                  : Deadline::Clock::time_point::min();
}

} // namespace

Deadline CountedClock::overAfter(std::size_t looks) {
    counts = {.looksBeforeEnd = looks};
    return {Deadline::Clock::time_point(), std::chrono::seconds(5), &countedNow};
}

std::size_t CountedClock::looks() {
    return counts.looks;
}

void CountedClock::work() {
    counts.mostWork = std::max(counts.mostWork, ++counts.work);
}

std::size_t CountedClock::mostWork() {
    return counts.mostWork;
}

} // namespace vxshow::test
