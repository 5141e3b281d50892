#include "vxshow/sources/DeadlineWatch.h"

#include "tests/unit/vxshow/sources/CountedClock.h"
#include "vxshow/sources/Failure.h"

#include <gtest/gtest.h>
#include <limits>

namespace vxshow::test {

using namespace sources;

namespace {

constexpr auto never = std::numeric_limits<std::size_t>::max();

} // namespace

TEST(DeadlineWatch, FewStepsDoNotLookAtTheClock) {
    DeadlineWatch watch(CountedClock::overAfter(0));
    for (unsigned step = 0; step < 1000; ++step) {
        watch.step();
    }
    EXPECT_EQ(CountedClock::looks(), 0U);
}

TEST(DeadlineWatch, ManyStepsLookAtItEvery4096) {
    DeadlineWatch watch(CountedClock::overAfter(never));
    for (unsigned step = 0; step < 3 * 4096; ++step) {
        watch.step();
    }
    EXPECT_EQ(CountedClock::looks(), 3U);
}

TEST(DeadlineWatch, StepsThatAreTakenAtOnceCountEach) {
    DeadlineWatch watch(CountedClock::overAfter(never));
    watch.steps(4000);
    watch.steps(95);
    EXPECT_EQ(CountedClock::looks(), 0U);
    watch.step();
    EXPECT_EQ(CountedClock::looks(), 1U);
    watch.steps(never);
    EXPECT_EQ(CountedClock::looks(), 2U);
}

TEST(DeadlineWatch, AMebibyteLooksAtIt) {
    DeadlineWatch watch(CountedClock::overAfter(1));
    watch.bytes((1U << 20) - 256);
    EXPECT_EQ(CountedClock::looks(), 0U);
    watch.bytes(256);
    EXPECT_EQ(CountedClock::looks(), 1U);
    EXPECT_THROW(watch.bytes(1U << 20), TimedOut);
}

TEST(DeadlineWatch, ADeadlineWithinAnotherHasItsClock) {
    auto const deadline = CountedClock::overAfter(never).within(std::chrono::seconds(1));
    auto const before = CountedClock::looks();
    EXPECT_FALSE(deadline.isOver());
    EXPECT_EQ(CountedClock::looks(), before + 1);
}

} // namespace vxshow::test
