#include "Vex/HashMap.h"

#include "tests/unit/platform/Vex/MapTests.h"

namespace map_tests {

using HashedMap = Vex::HashMap2018<EntrySlot>;
INSTANTIATE_TYPED_TEST_SUITE_P(HashMap2018, MapTest, HashedMap);

TEST(HashMap2018, TheIterationOrderDependsOnlyOnTheContent) {
    HashedMap ascending;
    HashedMap grownAndShrunk;
    for (Vex::U32 i = 0; i < 5000; ++i) {
        grownAndShrunk.upsert(slot(4999 - i));
    }
    for (Vex::U32 i = 100; i < 5000; ++i) {
        grownAndShrunk.remove(key(i));
    }
    for (Vex::U32 i = 0; i < 100; ++i) {
        ascending.upsert(slot(i));
    }
    EXPECT_EQ(keysOf(ascending), keysOf(grownAndShrunk));
}

TEST(HashMap2018, BeginsWithTheFirstEntryHoweverManyBeforeItAreRemovedOrInserted) {
    HashedMap map;
    for (Vex::U32 i = 0; i < 300; ++i) {
        map.upsert(slot(i));
    }
    auto const order = keysOf(map);
    for (Vex::U32 const number : order) {
        EXPECT_EQ(map.begin()->key.value(), number);
        map.remove(key(number));
        EXPECT_EQ(map.empty(), !map.begin());
        EXPECT_EQ(map.begin() == map.end(), map.empty());
    }
    std::mt19937 random(3);
    HashedMap same;
    for (int step = 0; step < 3000; ++step) {
        Vex::U32 const number = below(random, 1000);
        if (!map.empty() && step % 5 < 2) {
            auto const first = map.begin()->key;
            map.remove(first);
            same.remove(first);
        } else {
            map.upsert(slot(number));
            same.upsert(slot(number));
        }
        // A copy is filled anew.
        ASSERT_EQ(keysOf(map), keysOf(HashedMap(same)));
    }
    map.clear();
    EXPECT_FALSE(map.begin());
    map.upsert(slot(7));
    EXPECT_EQ(map.begin()->key.value(), 7U);
}

TEST(HashMap2018, NodesLiveUntilTheCollectionAndAllIteratorsReleaseThem) {
    // std::hash of an int is the int: all entries fall into one bucket, ordered by key.
    testNodeLifetime<Vex::HashMap2018<CountedSlot>>();
}

} // namespace map_tests
