#include "vxshow/state/narrow/Intervals.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <set>

namespace {

using Numbers = vxshow::state::narrow::Intervals<unsigned>;

} // namespace

TEST(Intervals, NoIntervalIsTheEmptySet) {
    Numbers const none;
    EXPECT_TRUE(none.empty());
    EXPECT_FALSE(none.contains(0));
    EXPECT_FALSE(none.intersects({0, std::numeric_limits<unsigned>::max()}));
}

TEST(Intervals, BothEndsAreInTheSet) {
    Numbers const set({{10, 20}});
    EXPECT_FALSE(set.contains(9));
    EXPECT_TRUE(set.contains(10));
    EXPECT_TRUE(set.contains(20));
    EXPECT_FALSE(set.contains(21));
}

TEST(Intervals, OverlappingIntervalsBecomeOneInAnyOrder) {
    Numbers const set({{15, 30}, {1, 2}, {10, 20}, {12, 13}});
    EXPECT_EQ(set.intervals(), (std::vector<Numbers::Interval>{{1, 2}, {10, 30}}));
}

TEST(Intervals, EqualValuesAreOneInterval) {
    EXPECT_EQ(Numbers({{7, 7}, {7, 7}}).intervals(), (std::vector<Numbers::Interval>{{7, 7}}));
}

TEST(Intervals, TheWholeRangeIsOneInterval) {
    unsigned const last = std::numeric_limits<unsigned>::max();
    Numbers const all({{0, last}, {5, last}});
    EXPECT_EQ(all.intervals().size(), 1);
    EXPECT_TRUE(all.contains(0));
    EXPECT_TRUE(all.contains(last));
}

TEST(Intervals, AnIntervalIntersectsIfAnyValueIsShared) {
    Numbers const set({{10, 20}, {40, 50}});
    EXPECT_TRUE(set.intersects({0, 10}));
    EXPECT_TRUE(set.intersects({20, 39}));
    EXPECT_TRUE(set.intersects({0, 100}));
    EXPECT_TRUE(set.intersects({45, 46}));
    EXPECT_FALSE(set.intersects({0, 9}));
    EXPECT_FALSE(set.intersects({21, 39}));
    EXPECT_FALSE(set.intersects({51, 52}));
}

TEST(Intervals, RandomSetsContainWhatTheirIntervalsDo) {
    std::mt19937 random(1);
    for (int round = 0; round < 200; ++round) {
        std::vector<Numbers::Interval> intervals;
        std::set<unsigned> expected;
        for (auto count = random() % 6; count > 0; --count) {
            unsigned const first = static_cast<unsigned>(random() % 60);
            unsigned const last = first + static_cast<unsigned>(random() % 8);
            intervals.push_back({first, last});
            for (unsigned value = first; value <= last; ++value) {
                expected.insert(value);
            }
        }
        Numbers const set(intervals);
        for (unsigned value = 0; value < 70; ++value) {
            EXPECT_EQ(set.contains(value), expected.count(value) > 0);
        }
    }
}
