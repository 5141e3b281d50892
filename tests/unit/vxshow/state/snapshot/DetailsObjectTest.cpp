#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

namespace {

std::string withDetails(std::string const & details) {
    return R"({"format":"vxlan-controller-state","version":1,"details":)" + details + "}";
}

Nolt::EthAddr mac(unsigned last) {
    return Nolt::EthAddr::ofValue(0x020000000000ULL + last);
}

} // namespace

TEST(SnapshotDetails, AreReadAndSorted) {
    auto const mount = mounted(withDetails(R"({"leaf1":{"macs":[
        {"vni":20,"mac":"02:00:00:00:00:02","age":0},
        {"vni":10,"mac":"02:00:00:00:00:01","duplicate":true,"sticky":true,"inactive":true,
         "segment":"03:00:00:00:00:00:00:00:00:01","age":4294967295}],
        "vniNames":[{"vni":10,"name":"ls-10"},{"vni":10,"name":"ls-10"}],
        "l3Vnis":[{"vni":5001,"vrf":"red","up":true},{"vni":5000,"vrf":"blue"}]},
        "leaf2":{}})"));
    ASSERT_EQ(mount.details.size(), 1U) << "a source without any is not there";
    auto const & known = mount.details.at("leaf1");
    EXPECT_EQ(
        known.macs,
        (std::vector<state::MacDetails>{
            {Vxlan::Vni(10), mac(1), true, true, true,
             *state::EthernetSegment::tryFromString("03:00:00:00:00:00:00:00:00:01"), 4294967295U},
            {Vxlan::Vni(20), mac(2), false, false, false, {}, 0U}}));
    EXPECT_EQ(known.vniNames, (std::vector<state::VniName>{{Vxlan::Vni(10), "ls-10"}}));
    EXPECT_EQ(known.l3Vnis, (std::vector<state::L3VniDetails>{{Vxlan::Vni(5000), "blue", false},
                                                              {Vxlan::Vni(5001), "red", true}}));
}

TEST(SnapshotDetails, AreReadStrictly) {
    EXPECT_NE(refusal(withDetails(R"({"a":{},"a":{}})")).find("found \"a\" again"),
              std::string::npos);
    for (auto const * const bad :
         {R"({"a":{"macs":[{}]}})", R"({"a":{"macs":[{"vni":10,"mac":"x"}]}})",
          R"({"a":{"macs":[{"vni":16777216,"mac":"02:00:00:00:00:01"}]}})",
          R"({"a":{"macs":[{"vni":10,"mac":"02:00:00:00:00:01","segment":"1"}]}})",
          R"({"a":{"macs":[{"vni":10,"mac":"02:00:00:00:00:01","age":-1}]}})",
          R"({"a":{"macs":{}}})", R"({"a":{"vniNames":[{"vni":1}]}})",
          R"({"a":{"l3Vnis":[{"vni":1}]}})", R"({"a":{"x":[]}})", "[]"}) {
        EXPECT_NE(refusal(withDetails(bad)), "accepted") << bad;
    }
}

} // namespace vxshow::test
