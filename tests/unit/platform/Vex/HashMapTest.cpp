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

TEST(HashMap2018, NodesLiveUntilTheCollectionAndAllIteratorsReleaseThem) {
    // std::hash of an int is the int: all entries fall into one bucket, ordered by key.
    testNodeLifetime<Vex::HashMap2018<CountedSlot>>();
}

} // namespace map_tests
