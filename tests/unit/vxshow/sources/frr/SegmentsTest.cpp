#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

/// A MAC address behind a segment of VTEPs 2 and 3, as in the answer to each command.
FakeZebra zebraWithSegment() {
    auto zebra = zebraWithMacs(remoteMac("02:00:00:00:00:01", "0.0.0.0", 4));
    zebra["show evpn mac vni 10 mac 02:00:00:00:00:01 json"] =
        R"({"02:00:00:00:00:01":{"type":"remote","remoteVtep":"0.0.0.0","localSequence":0,)"
        R"("remoteSequence":4,"esi":"03:01"}})";
    zebra["show evpn es detail json"] =
        R"([{"esi":"03:01","flags":["remote"],"vteps":[{"vtep":"10.0.0.2","nexthopId":1},)"
        R"({"vtep":"10.0.0.3","nexthopId":2}]}])";
    return zebra;
}

} // namespace

TEST(FrrSegments, AMacBehindASegmentIsAtEachOfItsVteps) {
    auto zebra = zebraWithSegment();
    auto const answer = zebra.ask();
    EXPECT_TRUE(answer.fits);
    EXPECT_EQ(macsOf(answer), "remote mac 10 02:00:00:00:00:01 10.0.0.2 moves 4\n"
                              "remote mac 10 02:00:00:00:00:01 10.0.0.3 moves 4\n");
    ASSERT_EQ(zebra.runs.size(), 2U);
    EXPECT_EQ(zebra.runs[1],
              (std::vector<std::string>{"show evpn mac vni 10 mac 02:00:00:00:00:01 json",
                                        "show evpn es detail json"}));
}

TEST(FrrSegments, AMacThatHasLeftItsSegmentIsAtItsNewVtep) {
    auto zebra = zebraWithSegment();
    zebra["show evpn mac vni 10 mac 02:00:00:00:00:01 json"] =
        "{" + localMac("02:00:00:00:00:01", 5) + "}";
    EXPECT_EQ(macsOf(zebra.ask()), "leaf1 mac 10 02:00:00:00:00:01 10.0.0.1 moves 5\n");
}

TEST(FrrSegments, AMacThatDisappearsBetweenAnswersIsDropped) {
    auto zebra = zebraWithSegment();
    zebra["show evpn mac vni 10 mac 02:00:00:00:00:01 json"] = "{}";
    auto const answer = zebra.ask();
    EXPECT_TRUE(answer.fits);
    EXPECT_EQ(macsOf(answer), "");
}

TEST(FrrSegments, ManyMacsBehindSegmentsAreAskedForInOneCommand) {
    std::string entries;
    std::string details;
    for (unsigned index = 0; index <= 64; ++index) {
        auto const mac = "02:00:00:00:01:" + std::to_string(10 + index);
        auto const comma = entries.empty() ? "" : ",";
        entries += comma + remoteMac(mac, "0.0.0.0");
        details += comma + ("\"" + mac) +
                   R"(":{"type":"remote","remoteVtep":"0.0.0.0","localSequence":0,)"
                   R"("remoteSequence":0,"esi":"03:01"})";
    }
    auto zebra = zebraWithSegment();
    zebra["show evpn mac vni all json"] = R"({"10":{"macs":{)" + entries + "}}}";
    zebra["show evpn mac vni all detail json"] = R"({"10":{"macs":{)" + details +
                                                 R"(}},"11":{"macs":{)" +
                                                 localMac("02:00:00:00:00:07") + "}}}";
    zebra["show evpn mac vni 10 json"] = R"({"macs":{)" + entries + "}}";
    zebra["show evpn vni detail json"] = "[" + l2Vni(10) + "," + l2Vni(11) + "]";
    zebra["show evpn vni 10 json"] = l2Vni(10);

    auto const all = zebra.ask();
    ASSERT_EQ(zebra.runs.size(), 2U);
    EXPECT_EQ(zebra.runs[1], (std::vector<std::string>{"show evpn mac vni all detail json",
                                                       "show evpn es detail json"}));
    EXPECT_EQ(all.facts.remote.macs.size(), 130U);
    EXPECT_EQ(all.facts.local.at("leaf1").macs.size(), 1U);

    state::Selection one;
    one.routers = false;
    one.vni = Vxlan::Vni(10);
    auto const selected = zebra.ask(one);
    EXPECT_TRUE(selected.fits);
    EXPECT_EQ(selected.facts.remote.macs, all.facts.remote.macs);
    EXPECT_TRUE(selected.facts.local.at("leaf1").macs.empty());
}

TEST(FrrSegments, ASegmentWithoutVtepsIsAskedForAgain) {
    auto zebra = zebraWithSegment();
    auto const segments = zebra["show evpn es detail json"];
    zebra["show evpn es detail json"] = R"([{"esi":"03:01"}])";
    unsigned runs = 0;
    auto const answer = converse(
        [&](std::vector<std::string> const & commands) {
            if (++runs == 3) {
                zebra["show evpn es detail json"] = segments;
            }
            return zebra.run()(commands);
        },
        {"leaf1"}, {});
    EXPECT_EQ(runs, 4U);
    EXPECT_TRUE(answer.fits);
    EXPECT_FALSE(answer.findings.warning());
    EXPECT_EQ(answer.facts.remote.macs.size(), 2U);
}

TEST(FrrSegments, AReferenceThatStillDanglesIsLeftOutAndCounted) {
    auto zebra = zebraWithSegment();
    zebra["show evpn es detail json"] = "[]";
    auto const answer = zebra.ask();
    EXPECT_EQ(zebra.runs.size(), 6U);
    EXPECT_FALSE(answer.fits);
    EXPECT_EQ(macsOf(answer), "");
    EXPECT_EQ(answer.findings.warning(),
              "1 entry left out: 02:00:00:00:00:01 in VNI 10: behind Ethernet segment \"03:01\", "
              "which has no known VTEP");
    EXPECT_EQ(linesOf(answer.facts, "remote flood"),
              "remote flood 10 00:00:00:00:00:00 10.0.0.2\n");
}

TEST(FrrSegments, AtTheDeadlineTheLastAnswerIsTaken) {
    auto zebra = zebraWithSegment();
    zebra["show evpn es detail json"] = "[]";
    unsigned runs = 0;
    auto const answer = converse(
        [&](std::vector<std::string> const & commands) {
            if (++runs > 2) {
                throw TimedOut("time limit");
            }
            return zebra.run()(commands);
        },
        {"leaf1"}, {});
    EXPECT_FALSE(answer.fits);
    EXPECT_EQ(answer.findings.leftOut.count(), 1U);
}

TEST(FrrSegments, ALocalMacOnASegmentIsAtThisVtep) {
    auto zebra = zebraWithMacs("");
    zebra["show evpn vni 10 json"] = l2Vni(10);
    zebra["show evpn mac vni 10 mac 02:00:00:00:00:01 json"] =
        R"({"02:00:00:00:00:01":{"type":"local","localSequence":0,"esi":"03:01"}})";
    zebra["show evpn es detail json"] = R"([{"esi":"03:01","vteps":[{"vtep":"10.0.0.3"}]}])";
    state::Selection one;
    one.routers = false;
    one.vni = Vxlan::Vni(10);
    one.mac = Nolt::EthAddr::fromString("02:00:00:00:00:01");
    EXPECT_EQ(macsOf(zebra.ask(one)), "leaf1 mac 10 02:00:00:00:00:01 10.0.0.1 moves 0\n");
}

} // namespace vxshow::test
