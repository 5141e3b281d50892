#include "Vex/FlatHashMap.h"
#include "Vex/HashMap.h"
#include "Vex/OrderedMap.h"
#include "tests/unit/platform/Vex/MapTests.h"

#include <cstdlib>
#include <new>
#include <sys/resource.h>

namespace map_tests {

namespace {

/// Fills a collection until this process, which has little memory left, is ended. Exits with status
/// 0 if the failure is reported to the caller instead.
template <class Map>
void fillUntilMemoryRunsOut() {
    rlimit const none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    rlimit const little{64U << 20U, 64U << 20U};
    setrlimit(RLIMIT_AS, &little);
    try {
        Map map;
        for (Vex::U32 number = 0; number < 100'000'000; ++number) {
            map.upsert(slot(number));
        }
    } catch (std::bad_alloc const &) {
    }
    std::_Exit(0);
}

template <class Map>
class AllocationFailure : public testing::Test {};

using Maps = testing::Types<Vex::OrderedMap<EntrySlot>, Vex::HashMap2018<EntrySlot>,
                            Vex::FlatHashMap<EntrySlot>>;
TYPED_TEST_SUITE(AllocationFailure, Maps);

TYPED_TEST(AllocationFailure, OfAnInsertionEndsTheProcess) {
    EXPECT_DEATH(fillUntilMemoryRunsOut<TypeParam>(), "");
}

} // namespace

} // namespace map_tests
