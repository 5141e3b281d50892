#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

/// A MAC address behind a segment of VTEPs 2 and 3, as each command tells it.
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

std::string macsOf(Answer const & answer) {
    return linesOf(answer.facts, "leaf1 mac") + linesOf(answer.facts, "remote mac");
}

FakeZebra zebraWithNeighbour(std::string const & neighbour) {
    auto zebra = zebraWithMacs("");
    zebra["show evpn arp-cache vni all json"] = R"({"10":{"numArpNd":1,)" + neighbour + "}}";
    return zebra;
}

std::string arpOf(Answer const & answer) {
    return linesOf(answer.facts, "leaf1 arp") + linesOf(answer.facts, "remote arp");
}

/// The VRF red with the L3 VNI 5001, the interface br10 and these routes.
FakeZebra zebraWithRoutes(std::string const & routes) {
    auto zebra = zebraWithMacs("");
    zebra["show vrf vni json"] = R"({"vrfs":[{"vrf":"red","vni":5001}]})";
    zebra["show interface vrf red json"] =
        R"({"br10":{"hardwareAddress":"02:00:00:00:00:fe","ipAddresses":[)"
        R"({"address":"192.0.2.1/24"},{"address":"fe80::1/64"}]}})";
    zebra["show ip route vrf red json"] = routes;
    return zebra;
}

std::string routesOf(Answer const & answer) {
    return linesOf(answer.facts, "router");
}

constexpr char const * notInForce = "EVPN is not active: zebra holds no VNIs, as when bgpd is down";

constexpr char const * redPort = "router red port 192.0.2.1/24 vni 10 02:00:00:00:00:fe 10.0.0.1\n";

} // namespace

TEST(FrrQuirks, EmptyAnswersMeanThatThereIsNothing) {
    for (auto const * const nothing : {"{}\n", "{ }\n", "{\n}\n", "[]\n", "[\n]\n"}) {
        FakeZebra zebra;
        for (auto const * const command :
             {"show evpn vni detail json", "show evpn mac vni all json",
              "show evpn arp-cache vni all json", "show vrf vni json"}) {
            zebra[command] = nothing;
        }
        auto const answer = zebra.ask();
        EXPECT_TRUE(answer.fits);
        EXPECT_EQ(linesOf(answer.facts), "switch leaf1 id 00:00:5e:00:53:e1\n") << nothing;
        EXPECT_FALSE(answer.findings.warning()) << nothing;
    }
}

TEST(FrrQuirks, NoTextInPlaceOfTheVnisMeansThatEvpnIsNotInForce) {
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
            auto const answer = zebra.ask(selection);
            EXPECT_TRUE(answer.fits);
            EXPECT_EQ(linesOf(answer.facts), "switch leaf1 id 00:00:5e:00:53:e1\n");
            EXPECT_EQ(answer.findings.warning(), notInForce);
        }
        EXPECT_EQ(zebra.runs.size(), 2U);
    }
}

TEST(FrrQuirks, NoTextInPlaceOfTheMacsMeansThatThereAreNone) {
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

TEST(FrrQuirks, TheSequenceInForceIsThatOfTheSide) {
    auto zebra = zebraWithMacs(
        R"("02:00:00:00:00:01":{"type":"local","localSequence":3,"remoteSequence":9},)"
        R"("02:00:00:00:00:02":{"type":"remote","remoteVtep":"10.0.0.2","localSequence":9,)"
        R"("remoteSequence":4})");
    EXPECT_EQ(macsOf(zebra.ask()), "leaf1 mac 10 02:00:00:00:00:01 10.0.0.1 moves 3\n"
                                   "remote mac 10 02:00:00:00:00:02 10.0.0.2 moves 4\n");
}

TEST(FrrQuirks, AMacBehindASegmentIsAtEachOfItsVteps) {
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

TEST(FrrQuirks, AMacThatHasLeftItsSegmentIsWhereItIsNow) {
    auto zebra = zebraWithSegment();
    zebra["show evpn mac vni 10 mac 02:00:00:00:00:01 json"] =
        "{" + localMac("02:00:00:00:00:01", 5) + "}";
    EXPECT_EQ(macsOf(zebra.ask()), "leaf1 mac 10 02:00:00:00:00:01 10.0.0.1 moves 5\n");
}

TEST(FrrQuirks, AMacThatIsGoneInBetweenIsNowhere) {
    auto zebra = zebraWithSegment();
    zebra["show evpn mac vni 10 mac 02:00:00:00:00:01 json"] = "{}";
    auto const answer = zebra.ask();
    EXPECT_TRUE(answer.fits);
    EXPECT_EQ(macsOf(answer), "");
}

TEST(FrrQuirks, ManyMacsBehindSegmentsAreAskedForAtOnce) {
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

TEST(FrrQuirks, ASegmentWithoutVtepsIsAskedForAgain) {
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

TEST(FrrQuirks, WhatStillDanglesIsLeftOutAndTold) {
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

TEST(FrrQuirks, WhenTheTimeIsOverTheLastAnswerIsTaken) {
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

TEST(FrrQuirks, AVniThatHasComeInBetweenDangles) {
    auto zebra = zebraWithMacs(localMac("02:00:00:00:00:01"));
    zebra["show evpn vni detail json"] = "[" + l2Vni(20) + "]";
    auto const answer = zebra.ask();
    EXPECT_FALSE(answer.fits);
    EXPECT_EQ(answer.findings.warning(),
              "1 entry left out: 02:00:00:00:00:01 in VNI 10, an unknown VNI");
}

TEST(FrrQuirks, ALocalMacOnASegmentIsAtThisVtep) {
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

TEST(FrrQuirks, AMacKnownFromArpAloneIsNowhere) {
    auto zebra = zebraWithMacs(R"("02:00:00:00:00:01":{"type":"auto","localSequence":0})");
    auto const answer = zebra.ask();
    EXPECT_EQ(macsOf(answer), "");
    EXPECT_FALSE(answer.findings.warning());
}

TEST(FrrQuirks, AnInactiveIpAddressIsAnnouncedToNobody) {
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

TEST(FrrQuirks, AVniWithoutAnSviHasNoPorts) {
    for (auto const * const svi : {"", R"("sviInterface":"None",)", R"("sviInterface":"",)"}) {
        auto zebra = zebraWithRoutes("{}");
        zebra["show evpn vni detail json"] =
            R"([{"vni":10,"type":"L2","vrf":"red","vxlanInterface":"vx10","ifindex":6,)" +
            std::string(svi) + R"("vtepIp":"10.0.0.1"}])";
        zebra["show evpn mac vni all json"] =
            R"({"10":{"macs":{)" + localMac("02:00:00:00:00:01") + "}}}";
        zebra["show interface vrf red json"] =
            R"({"None":{"ipAddresses":[{"address":"192.0.2.1/24"}]},)"
            R"("":{"ipAddresses":[{"address":"192.0.2.2/24"}]}})";
        auto const answer = zebra.ask();
        EXPECT_EQ(macsOf(answer), "leaf1 mac 10 02:00:00:00:00:01 10.0.0.1 moves 0\n") << svi;
        EXPECT_EQ(routesOf(answer), "") << svi;
        EXPECT_FALSE(answer.findings.warning()) << svi;
    }
}

TEST(FrrQuirks, AnL3VniThatIsDownHasNoVtep) {
    FakeZebra zebra;
    zebra["show evpn vni detail json"] =
        R"([{"vni":5001,"type":"L3","localVtepIp":"0.0.0.0","sviIntf":"None","state":"Down",)"
        R"("vrf":"red","l2Vnis":[]}])";
    EXPECT_EQ(linesOf(zebra.ask().facts), "switch leaf1 id 00:00:5e:00:53:e1\n");
}

TEST(FrrQuirks, OfTheRoutesOfAPrefixTheSelectedOneIsTaken) {
    auto zebra =
        zebraWithRoutes(R"({"10.1.0.0/16":[{"nexthops":[{"ip":"10.0.0.8","active":true}]},)"
                        R"({"selected":true,"nexthops":[{"ip":"10.0.0.2","active":true},)"
                        R"({"ip":"10.0.0.9"},{"ip":"10.0.0.7","active":true,"resolver":true}]}]})");
    EXPECT_EQ(routesOf(zebra.ask()),
              redPort + std::string("router red route 10.1.0.0/16 10.0.0.2\n"));
}

TEST(FrrQuirks, AMappedNexthopIsTheIpv4Address) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show ipv6 route vrf red json"] =
        R"({"2001:db8::/32":[{"selected":true,"nexthops":[{"ip":"::ffff:a00:2","active":true}]}]})";
    EXPECT_EQ(routesOf(zebra.ask()),
              redPort + std::string("router red route 2001:db8::/32 10.0.0.2\n"));
}

TEST(FrrQuirks, ARouteToNowhereHasNoNexthop) {
    auto zebra = zebraWithRoutes(
        R"({"10.1.0.0/16":[{"selected":true,"nexthops":[{"blackhole":true,"active":true}]}],)"
        R"("192.0.2.0/24":[{"selected":true,"nexthops":[{"directlyConnected":true,)"
        R"("active":true}]}]})");
    EXPECT_EQ(routesOf(zebra.ask()), redPort + std::string("router red route 10.1.0.0/16\n"
                                                           "router red route 192.0.2.0/24\n"));
}

TEST(FrrQuirks, AnAddressWithoutAMacIsRemarkedWhereItIsActive) {
    auto const neighbour = [](std::string const & state) {
        return R"("192.0.2.9":{"type":"local","state":")" + state +
               R"(","mac":"00:00:00:00:00:00","localSequence":0,"remoteSequence":0})";
    };
    EXPECT_EQ(zebraWithNeighbour(neighbour("inactive")).ask().findings.warning(), std::nullopt);
    EXPECT_EQ(zebraWithNeighbour(neighbour("active")).ask().findings.warning(),
              "1 entry left out: VNI 10: 192.0.2.9 has MAC \"00:00:00:00:00:00\", expected an "
              "Ethernet address such as 00:1c:73:0a:0b:0c");
}

TEST(FrrQuirks, AnIpv4LinkLocalAddressIsAPort) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show interface vrf red json"] =
        R"({"br10":{"hardwareAddress":"02:00:00:00:00:fe","ipAddresses":[)"
        R"({"address":"169.254.1.1/16"},{"address":"fe80::1/64"}]}})";
    EXPECT_EQ(routesOf(zebra.ask()),
              "router red port 169.254.1.1/16 vni 10 02:00:00:00:00:fe 10.0.0.1\n");
}

TEST(FrrQuirks, AnInterfaceWithoutAnEthernetAddressIsRemarkedWhereItIsAPort) {
    auto zebra = zebraWithRoutes("{}");
    auto const interface = [](std::string const & name, std::string const & mac) {
        return '"' + name + R"(":{"hardwareAddress":")" + mac +
               R"(","ipAddresses":[{"address":"192.0.2.1/24"}]})";
    };
    auto & answer = zebra["show interface vrf red json"];
    answer =
        "{" + interface("br10", "02:00:00:00:00:fe") + "," + interface("gre1", "0a:00:00:01") + "}";
    EXPECT_EQ(zebra.ask().findings.warning(), std::nullopt);
    answer = "{" + interface("br10", "0a:00:00:01") + "}";
    EXPECT_EQ(zebra.ask().findings.warning(),
              "1 entry left out: VRF \"red\": hardwareAddress \"0a:00:00:01\", expected an "
              "Ethernet address such as 00:1c:73:0a:0b:0c");
}

TEST(FrrQuirks, AVrfThatIsGoneDangles) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show interface vrf red json"] = "{}";
    auto const answer = zebra.ask();
    EXPECT_FALSE(answer.fits);
    EXPECT_EQ(routesOf(answer), "");
    EXPECT_EQ(answer.findings.warning(), "1 entry left out: VRF \"red\": no interfaces");
}

TEST(FrrQuirks, AVrfThatIsNotThereYetIsNotAskedForAgain) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show vrf vni json"] = R"({"vrfs":[{"vrf":"red","vni":5001,"vxlanIntf":"None",)"
                                 R"("sviIntf":"None","state":"Down","routerMac":"None"}]})";
    zebra["show interface vrf red json"] = "{}";
    auto const answer = zebra.ask();
    EXPECT_EQ(zebra.runs.size(), 2U);
    EXPECT_TRUE(answer.fits);
    EXPECT_EQ(routesOf(answer), "");
    EXPECT_EQ(answer.findings.warning(), "1 entry left out: VRF \"red\": no interfaces");
}

TEST(FrrQuirks, AVrfWhoseL3VniIsDownHasItsPortsAllTheSame) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show vrf vni json"] = R"({"vrfs":[{"vrf":"red","vni":5001,"state":"Down"}]})";
    EXPECT_EQ(routesOf(zebra.ask()), redPort);
}

TEST(FrrQuirks, AVrfThatIsUpWithoutInterfacesIsAskedForAgain) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show vrf vni json"] = R"({"vrfs":[{"vrf":"red","vni":5001,"state":"Up"}]})";
    zebra["show interface vrf red json"] = "{}";
    EXPECT_FALSE(zebra.ask().fits);
    EXPECT_EQ(zebra.runs.size(), 6U);
}

TEST(FrrQuirks, OfManyVrfsSomeAreAskedForInEachRun) {
    auto zebra = zebraWithRoutes("{}");
    std::string vrfs;
    std::set<std::string> expected;
    for (int number = 1000; number < 2200; ++number) {
        auto const name = "customer-" + std::to_string(number);
        vrfs +=
            R"(,{"vrf":")" + name + R"(","vni":)" + std::to_string(number) + R"(,"state":"Down"})";
        expected.insert("show interface vrf " + name + " json");
    }
    zebra["show vrf vni json"] = R"({"vrfs":[{"vrf":"red","vni":5001})" + vrfs + "]}";
    auto const answer = zebra.ask();
    EXPECT_TRUE(answer.fits);
    EXPECT_EQ(routesOf(answer).substr(0, std::string(redPort).size()), redPort);
    std::set<std::string> asked;
    for (auto const & commands : zebra.runs) {
        std::size_t bytes = 0;
        for (auto const & command : commands) {
            bytes += command.size();
            asked.insert(command);
        }
        EXPECT_LE(bytes, 65536U);
    }
    EXPECT_EQ(zebra.runs.size(), 4U);
    EXPECT_TRUE(std::includes(asked.begin(), asked.end(), expected.begin(), expected.end()));
}

TEST(FrrQuirks, AVrfWhoseNameIsNoWordIsNotAskedFor) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show vrf vni json"] = R"({"vrfs":[{"vrf":"red json\nshow version"},{"vrf":"al"}]})";
    auto const answer = zebra.ask();
    EXPECT_EQ(zebra.runs.size(), 1U);
    EXPECT_EQ(answer.findings.warning(),
              "2 entries left out, the first: VRF \"al\", expected a name of letters, digits, "
              "\"_\", \".\", \":\" and \"-\", not short for \"all\"");
}

} // namespace vxshow::test
