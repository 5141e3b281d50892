#include "vxshow/state/StateCounts.h"

#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using state::StateCounts;
using state::TableCounts;

TEST(StateCounts, OfNothingAreNone) {
    EXPECT_EQ(countsOf(state::Mount()), StateCounts());
}

TEST(StateCounts, AreOfEachPartThatIsMounted) {
    auto const mount = mounted(withReceived(R"({"switches":{"leaf1":{"10":{
        "unicast":{"02:00:00:00:00:01":{"vtep":"10.0.0.1"},"02:00:00:00:00:02":{"vtep":"10.0.0.1"}},
        "multipath":{"02:00:00:00:00:03":["10.0.0.1","10.0.0.2"]},
        "flood":{"00:00:00:00:00:00":["10.0.0.1","10.0.0.2"]},
        "arp":{"10.9.0.1":{"mac":"02:00:00:00:00:01"}}},"20":{}},"leaf2":{}},
        "sources":{"HSC":{"10":{}}},
        "evpn":{"EVPN":{"hosts":{"10":{"02:00:00:00:00:01":{"vtep":"10.0.0.1"}}},
                        "flood":{"10":["10.0.0.1"],"11":["10.0.0.1"]}}}})"));
    EXPECT_EQ(countsOf(mount).tables,
              (std::vector<TableCounts>{{"received", "switches", 2, 2, 2, 1, 2, 1},
                                        {"received", "HSC", 1, 1, 0, 0, 0, 0},
                                        {"received", "EVPN", 1, 2, 1, 0, 2, 0}}));
}

TEST(StateCounts, AnEmptyPartIsThere) {
    EXPECT_EQ(countsOf(mounted(withAdvertised(R"({"vnis":{},"sources":{"HSC":{}}})"))).tables,
              (std::vector<TableCounts>{{"advertised", "switches"}, {"advertised", "HSC", 1}}));
}

TEST(StateCounts, OfRoutersAreTheirPortsAndRoutes) {
    auto const counts = countsOf(mounted(withRouters(R"({
        "switches":{"leaf1":{"vteps":["10.0.0.1"]}},
        "vteps":{"10.0.0.1":{"active":true}},
        "status":{"prod":{"ports":{"10.1.2.3/24":{"vni":10,"mac":"02:00:00:00:00:0b"}},
                          "routes":{"10.0.0.0/8":["10.9.0.1","10.9.0.2"],"::/0":[]}},
                  "idle":{}}})")));
    EXPECT_EQ(counts, (StateCounts{{}, 2, 1, 2, 1}));
}

} // namespace vxshow::test
