#include "vxshow/system/ChildSlot.h"

#include "tests/unit/vxshow/system/Programs.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace std::chrono_literals;

namespace vxshow::test {

namespace {

using namespace system;

std::vector<ChildSlot> allSlots() {
    std::vector<ChildSlot> slots;
    slots.reserve(ChildSlot::count);
    while (auto slot = ChildSlot::take()) {
        slots.push_back(*std::move(slot));
    }
    return slots;
}

TEST(ChildSlot, AllCanBeTakenAndAreFreedAgain) {
    EXPECT_EQ(allSlots().size(), ChildSlot::count);
    EXPECT_EQ(allSlots().size(), ChildSlot::count);
}

TEST(ChildSlot, ARunFreesItsSlotWithAnyResult) {
    exited({"true"});
    run({"/no/such/program"}, patient());
    run({"sleep", "1000"}, {Clock::now() + 20ms, 0});
    EXPECT_EQ(allSlots().size(), ChildSlot::count);
}

TEST(ChildSlot, WithoutAFreeSlotARunWaitsUntilItsTimeLimit) {
    auto const slots = allSlots();
    auto const answer = run({"true"}, {Clock::now() + 50ms, 0});
    EXPECT_TRUE(std::holds_alternative<TimeLimitReached>(answer));
}

TEST(ChildSlot, WithoutAFreeSlotARunWaitsForTheNextOne) {
    auto slots = allSlots();
    std::jthread const other([&] {
        std::this_thread::sleep_for(50ms);
        slots.clear();
    });
    EXPECT_EQ(exited({"true"}).status, 0);
}

} // namespace

} // namespace vxshow::test
