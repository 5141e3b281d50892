#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

namespace {

std::string withUncounted(std::string const & uncounted) {
    return R"({"format":"vxlan-controller-state","version":1,"uncounted":)" + uncounted + "}";
}

} // namespace

TEST(SnapshotCounters, AreKeptUnlessTheyAreNamed) {
    auto const counters = mounted(withUncounted(R"({"received":{
        "leaf1":["changes"],"HSC":["preference","moves"],"leaf2":[]},
        "advertised":["moves","changes","preference"]})"))
                              .counters;
    EXPECT_EQ(counters.received.size(), 2U) << "a source that keeps all is not there";
    EXPECT_EQ(counters.receivedFrom("leaf1"), (state::Counters{true, false, true}));
    EXPECT_EQ(counters.receivedFrom("HSC"), (state::Counters{false, true, false}));
    EXPECT_EQ(counters.receivedFrom("leaf2"), state::Counters());
    EXPECT_EQ(counters.receivedFrom("leaf3"), state::Counters());
    EXPECT_EQ(counters.advertised, (state::Counters{false, false, false}));
    EXPECT_TRUE(mounted(withUncounted("{}")).counters.areAllKept());
}

TEST(SnapshotCounters, AreReadStrictly) {
    EXPECT_NE(refusal(withUncounted(R"({"received":{"a":[],"a":[]}})")).find("found \"a\" again"),
              std::string::npos);
    EXPECT_NE(refusal(withUncounted(R"({"advertised":["move"]})"))
                  .find(R"(found "move", expected "moves", "changes" or "preference")"),
              std::string::npos);
    EXPECT_NE(refusal(withUncounted(R"({"advertised":["moves","moves"]})"))
                  .find(R"(found "moves" again, expected it once)"),
              std::string::npos);
    for (auto const * const bad : {R"({"received":[]})", R"({"advertised":{}})",
                                   R"({"advertised":[1]})", R"({"x":[]})", "[]"}) {
        EXPECT_NE(refusal(withUncounted(bad)), "accepted") << bad;
    }
}

} // namespace vxshow::test
