#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

FakeZebra zebraWithNeighbour(std::string const & neighbour) {
    auto zebra = zebraWithMacs("");
    zebra["show evpn arp-cache vni all json"] = R"({"10":{"numArpNd":1,)" + neighbour + "}}";
    return zebra;
}

std::string arpOf(Answer const & answer) {
    return linesOf(answer.facts, "leaf1 arp") + linesOf(answer.facts, "remote arp");
}

} // namespace

TEST(FrrQuirks, EmptyAnswersMeanThatThereIsNothing) {
    for (auto const * const nothing : {"", "{}\n", "{ }\n", "{\n}\n", "[]\n", "[\n]\n", "null\n"}) {
        FakeZebra zebra;
        for (auto const * const command :
             {"show evpn mac vni all json", "show evpn es detail json",
              "show evpn arp-cache vni all json", "show vrf vni json"}) {
            zebra[command] = nothing;
        }
        auto const answer = zebra.ask();
        EXPECT_TRUE(answer.fits);
        EXPECT_EQ(linesOf(answer.facts), "switch leaf1 id 00:00:5e:00:53:e1\n") << nothing;
        EXPECT_FALSE(answer.findings.warning()) << nothing;
    }
}

TEST(FrrQuirks, AnEmptyAnswerInsteadOfVnisMeansThatEvpnIsNotActive) {
    for (auto const * const nothing : {"", "\n"}) {
        FakeZebra zebra;
        for (auto const * const command :
             {"show evpn vni detail json", "show evpn vni 10 json", "show evpn mac vni all json",
              "show evpn mac vni 10 json", "show evpn arp-cache vni all json"}) {
            zebra[command] = nothing;
        }
        state::Selection one;
        one.routers = false;
        one.arpTables = false;
        one.vni = Vxlan::Vni(10);
        for (auto const & selection : {state::Selection(), one}) {
            EXPECT_TRUE(failureOf(zebra, selection).starts_with("EVPN is not active: "));
        }
        EXPECT_EQ(zebra.runs.size(), 2U);
    }
}

TEST(FrrQuirks, AnEmptyAnswerInsteadOfMacsMeansThatThereAreNone) {
    auto zebra = zebraWithMacs("");
    zebra["show evpn mac vni all json"] = "";
    EXPECT_FALSE(zebra.ask().findings.warning());
}

TEST(FrrQuirks, CountersBetweenTheEntriesAreSkipped) {
    auto zebra = zebraWithMacs("\"numMacs\":7," + localMac("02:00:00:00:00:01"));
    EXPECT_EQ(macsOf(zebra.ask()), "leaf1 mac 10 02:00:00:00:00:01 10.0.0.1 moves 0\n");
}

TEST(FrrQuirks, UnknownMembersAreSkipped) {
    auto zebra = zebraWithMacs(
        R"("02:00:00:00:00:01":{"new":{"a":[1,{"type":"x"}]},"type":"local","localSequence":3,)"
        R"("remoteSequence":0,"other":null})");
    EXPECT_EQ(macsOf(zebra.ask()), "leaf1 mac 10 02:00:00:00:00:01 10.0.0.1 moves 3\n");
}

TEST(FrrQuirks, TheSequenceInEffectIsThatOfTheSide) {
    auto zebra = zebraWithMacs(
        R"("02:00:00:00:00:01":{"type":"local","localSequence":3,"remoteSequence":9},)"
        R"("02:00:00:00:00:02":{"type":"remote","remoteVtep":"10.0.0.2","localSequence":9,)"
        R"("remoteSequence":4})");
    EXPECT_EQ(macsOf(zebra.ask()), "leaf1 mac 10 02:00:00:00:00:01 10.0.0.1 moves 3\n"
                                   "remote mac 10 02:00:00:00:00:02 10.0.0.2 moves 4\n");
}

TEST(FrrQuirks, AVniCreatedBetweenAnswersDangles) {
    auto zebra = zebraWithMacs(localMac("02:00:00:00:00:01"));
    zebra["show evpn vni detail json"] = "[" + l2Vni(20) + "]";
    auto const answer = zebra.ask();
    EXPECT_FALSE(answer.fits);
    EXPECT_EQ(answer.findings.warning(),
              "1 entry left out: 02:00:00:00:00:01 in VNI 10, an unknown VNI");
}

TEST(FrrQuirks, AMacKnownOnlyFromArpHasNoPlace) {
    auto zebra = zebraWithMacs(R"("02:00:00:00:00:01":{"type":"auto","localSequence":0})");
    auto const answer = zebra.ask();
    EXPECT_EQ(macsOf(answer), "");
    EXPECT_FALSE(answer.findings.warning());
}

TEST(FrrQuirks, AnInactiveIpAddressIsNotAnnounced) {
    auto zebra = zebraWithNeighbour(
        R"("192.0.2.1":{"type":"local","state":"inactive","mac":"02:00:00:00:00:01",)"
        R"("localSequence":0,"remoteSequence":0})");
    EXPECT_EQ(arpOf(zebra.ask()), "");
}

TEST(FrrQuirks, ALinkLocalAddressIsAnEntry) {
    auto zebra = zebraWithNeighbour(
        R"("fe80::1":{"type":"remote","state":"active","mac":"02:00:00:00:00:01",)"
        R"("remoteEs":"03:01","localSequence":1,"remoteSequence":2})");
    EXPECT_EQ(arpOf(zebra.ask()), "remote arp 10 fe80::1 02:00:00:00:00:01 changes 2\n");
}

TEST(FrrQuirks, AVniWithoutAVtepAddressHasNoLocalPlaces) {
    auto zebra = zebraWithMacs(localMac("02:00:00:00:00:01"));
    zebra["show evpn vni detail json"] =
        R"([{"vni":10,"type":"L2","vrf":"red","sviInterface":"br10","sviIfindex":5,)"
        R"("vtepIp":"0.0.0.0"}])";
    auto const answer = zebra.ask();
    EXPECT_EQ(linesOf(answer.facts),
              "switch leaf1 id 00:00:5e:00:53:e1\nleaf1 vni 10\nremote vni 10\n");
    EXPECT_EQ(answer.findings.warning(), "1 entry left out: 02:00:00:00:00:01 in VNI 10: local, "
                                         "but the VNI has no VTEP address");
}

TEST(FrrQuirks, AnActiveAddressWithoutAMacIsCounted) {
    auto const neighbour = [](std::string const & state) {
        return R"("192.0.2.9":{"type":"local","state":")" + state +
               R"(","mac":"00:00:00:00:00:00","localSequence":0,"remoteSequence":0})";
    };
    EXPECT_EQ(zebraWithNeighbour(neighbour("inactive")).ask().findings.warning(), std::nullopt);
    EXPECT_EQ(zebraWithNeighbour(neighbour("active")).ask().findings.warning(),
              "1 entry left out: VNI 10: 192.0.2.9 has MAC \"00:00:00:00:00:00\", expected an "
              "Ethernet address such as 00:1c:73:0a:0b:0c");
}

} // namespace vxshow::test
