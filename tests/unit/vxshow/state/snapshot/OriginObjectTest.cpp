#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

namespace {

std::string withOrigin(std::string const & origin) {
    return R"({"format":"vxlan-controller-state","version":1,"origin":)" + origin + "}";
}

std::string withSource(std::string const & source) {
    return withOrigin(R"({"made":"2026-11-23T02:10:11Z","version":"v","sources":[)" + source +
                      "]}");
}

} // namespace

TEST(SnapshotOrigin, IsReadAsItIsWritten) {
    auto const mount = mounted(withSource(R"({"name":"leaf1","kind":"frr","role":"hsc",
        "read":"2026-11-23T02:10:10.5Z","failure":"unreachable","remarks":"one",
        "counts":{"switches":1,"vnis":2,"localMacs":3,"remoteMacs":4,"floods":5,
                  "localBindings":6,"remoteBindings":7,"routers":8,"routes":9,"leftOut":10,
                  "ipv6Vteps":11,"unplaced":12,"disputed":13}},
        {"name":"leaf2","kind":"ovsdb","role":"switch","failure":"gone"})"));
    ASSERT_TRUE(mount.origin);
    EXPECT_EQ(mount.origin->made.stringValue(), "2026-11-23T02:10:11.000Z");
    EXPECT_EQ(mount.origin->version, "v");
    ASSERT_EQ(mount.origin->sources.size(), 2U);
    EXPECT_EQ(mount.origin->sources[0],
              (state::SourceOrigin{"leaf1",
                                   "frr",
                                   state::Role::hsc,
                                   system::UtcTime::tryFromString("2026-11-23T02:10:10.500Z"),
                                   "unreachable",
                                   "one",
                                   {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}}));
    EXPECT_EQ(mount.origin->sources[1],
              (state::SourceOrigin{"leaf2", "ovsdb", state::Role::switches, {}, "gone"}));
}

TEST(SnapshotOrigin, OfAnOlderSnapshotIsNotKnown) {
    EXPECT_FALSE(mounted(R"({"format":"vxlan-controller-state","version":1})").origin);
}

TEST(SnapshotOrigin, IsReadStrictly) {
    for (auto const & [origin, error] : std::vector<std::pair<std::string, std::string>>{
             {"{}", "1:57: origin: found an object, expected \"made\" in it"},
             {R"({"made":"yesterday","version":""})",
              "1:65: origin.made: found \"yesterday\", expected a time in UTC such as "
              "2026-11-23T02:10:11.125Z"},
             {R"({"made":"2026-11-23T02:10:11Z","version":"\u001b[2J"})",
              "1:98: origin.version: found \"\\u001b[2J\", expected a text without control "
              "characters"}}) {
        EXPECT_EQ(refusal(withOrigin(origin)), error);
    }
    EXPECT_NE(refusal(withSource(R"({"name":"a","kind":"frr","role":"leaf"})"))
                  .find("found \"leaf\", expected \"switch\", \"hsc\", \"qvx\" or \"evpn\""),
              std::string::npos);
}

} // namespace vxshow::test
