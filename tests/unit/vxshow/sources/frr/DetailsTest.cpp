#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <gtest/gtest.h>

/// What zebra reports of its entries and no listing shows.
namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

state::Selection withDetails(bool ofMacs) {
    state::Selection selection;
    selection.details = true;
    selection.macDetails = ofMacs;
    return selection;
}

std::string linesOfMacs(Answer const & answer) {
    std::string lines;
    for (auto const & one : answer.facts.details.macs) {
        lines.append(one.vni.stringValue()).append(" ").append(one.mac.stringValue());
        lines.append(one.isDuplicate ? " duplicate" : "").append(one.isSticky ? " sticky" : "");
        lines.append(one.isInactive ? " inactive" : "");
        lines.append(one.segment.isZero() ? "" : " segment " + one.segment.stringValue());
        lines.append(one.age ? " age " + std::to_string(*one.age) : "").append("\n");
    }
    return lines;
}

std::string entry(std::string const & members) {
    return R"("02:00:00:00:00:01":{"type":"local","localSequence":0,"remoteSequence":0)" + members +
           "}";
}

std::string detailsOf(std::string const & members) {
    auto zebra = zebraWithMacs(entry(members));
    return linesOfMacs(zebra.ask(withDetails(false)));
}

} // namespace

TEST(FrrDetails, OfAMacAddressAreItsFlagsItsSegmentAndItsAge) {
    EXPECT_EQ(detailsOf(R"(,"isDuplicate":true)"), "10 02:00:00:00:00:01 duplicate\n");
    EXPECT_EQ(detailsOf(R"(,"stickyMac":true)"), "10 02:00:00:00:00:01 sticky\n");
    EXPECT_EQ(detailsOf(R"(,"localInactive":true)"), "10 02:00:00:00:00:01 inactive\n");
    EXPECT_EQ(detailsOf(R"(,"esi":"03:02:40:98:00:e5:00:00:00:01")"),
              "10 02:00:00:00:00:01 segment 03:02:40:98:00:e5:00:00:00:01\n");
    EXPECT_EQ(detailsOf(R"(,"uptime":"00:01:02")"), "10 02:00:00:00:00:01 age 62\n");
}

TEST(FrrDetails, OfAPlainMacAddressThereAreNone) {
    EXPECT_EQ(detailsOf(""), "");
    EXPECT_EQ(detailsOf(R"(,"isDuplicate":false,"uptime":"a while","esi":"")"), "");
}

TEST(FrrDetails, OfWhatIsLeftOutThereAreNone) {
    auto zebra = zebraWithMacs(R"("02:00:00:00:00:01":{"type":"remote","remoteVtep":"fd00::1",)"
                               R"("localSequence":0,"remoteSequence":0,"isDuplicate":true})");
    EXPECT_TRUE(zebra.ask(withDetails(false)).facts.details.macs.empty());
    zebra["show evpn mac vni all json"] =
        R"({"11":{"macs":{)" + entry(R"(,"isDuplicate":true)") + "}}}";
    EXPECT_TRUE(zebra.ask(withDetails(false)).facts.details.macs.empty());
}

TEST(FrrDetails, AreKeptOnlyIfTheyAreSelected) {
    auto zebra = zebraWithMacs(entry(R"(,"isDuplicate":true)"));
    EXPECT_TRUE(zebra.ask().facts.details.isEmpty());
}

TEST(FrrDetails, OfVtep1AreItsDuplicateAndItsL3Vnis) {
    auto const answer = FakeZebra("vtep1").ask(withDetails(false));
    EXPECT_EQ(linesOfMacs(answer),
              "4098 02:40:98:00:e5:01 segment 03:02:40:98:00:e5:00:00:00:01 age 19\n"
              "4098 02:40:98:00:ee:03 duplicate\n");
    std::string l3Vnis;
    for (auto const & one : answer.facts.details.l3Vnis) {
        l3Vnis.append(one.vni.stringValue()).append(" ").append(one.vrf);
        l3Vnis.append(one.isUp ? " up\n" : " down\n");
    }
    EXPECT_EQ(l3Vnis, "5001 tenant1 up\n5002 tenant2 up\n");
}

TEST(FrrDetails, OfEveryMacAddressTakeOneQuestionInDetail) {
    FakeZebra zebra("vtep1");
    auto const answer = zebra.ask(withDetails(true));
    EXPECT_EQ(zebra.runs.size(), 2U); // the second one is about the VRFs
    EXPECT_EQ(zebra.runs[0][1], "show evpn mac vni all detail json");
    std::size_t sticky = 0;
    for (auto const & one : answer.facts.details.macs) {
        EXPECT_TRUE(one.age);
        sticky += one.isSticky ? 1 : 0;
    }
    EXPECT_EQ(sticky, 3U);
    EXPECT_EQ(answer.facts.details.macs.size(),
              answer.facts.local.at("leaf1").macs.size() + answer.facts.remote.macs.size() - 1)
        << "one is at two VTEPs";
}

} // namespace vxshow::test
