#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <gtest/gtest.h>

#include <set>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

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

constexpr char const * redPort = "router red port 192.0.2.1/24 vni 10 02:00:00:00:00:fe 10.0.0.1\n";

} // namespace

TEST(FrrVrfs, AVniWithoutAnSviHasNoPorts) {
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

TEST(FrrVrfs, AnL3VniThatIsDownHasNoVtep) {
    FakeZebra zebra;
    zebra["show evpn vni detail json"] =
        R"([{"vni":5001,"type":"L3","localVtepIp":"0.0.0.0","sviIntf":"None","state":"Down",)"
        R"("vrf":"red","l2Vnis":[]}])";
    EXPECT_EQ(linesOf(zebra.ask().facts), "switch leaf1 id 00:00:5e:00:53:e1\n");
}

TEST(FrrVrfs, OnlyTheSelectedRouteOfAPrefixIsTaken) {
    auto zebra =
        zebraWithRoutes(R"({"10.1.0.0/16":[{"nexthops":[{"ip":"10.0.0.8","active":true}]},)"
                        R"({"selected":true,"nexthops":[{"ip":"10.0.0.2","active":true},)"
                        R"({"ip":"10.0.0.9"},{"ip":"10.0.0.7","active":true,"resolver":true}]}]})");
    EXPECT_EQ(routesOf(zebra.ask()),
              redPort + std::string("router red route 10.1.0.0/16 10.0.0.2\n"));
}

TEST(FrrVrfs, AMappedNexthopIsTheIpv4Address) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show ipv6 route vrf red json"] =
        R"({"2001:db8::/32":[{"selected":true,"nexthops":[{"ip":"::ffff:a00:2","active":true}]}]})";
    EXPECT_EQ(routesOf(zebra.ask()),
              redPort + std::string("router red route 2001:db8::/32 10.0.0.2\n"));
}

TEST(FrrVrfs, ABlackholeRouteHasNoNexthop) {
    auto zebra = zebraWithRoutes(
        R"({"10.1.0.0/16":[{"selected":true,"nexthops":[{"blackhole":true,"active":true}]}],)"
        R"("192.0.2.0/24":[{"selected":true,"nexthops":[{"directlyConnected":true,)"
        R"("active":true}]}]})");
    EXPECT_EQ(routesOf(zebra.ask()), redPort + std::string("router red route 10.1.0.0/16\n"
                                                           "router red route 192.0.2.0/24\n"));
}

TEST(FrrVrfs, AnIpv4LinkLocalAddressIsAPort) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show interface vrf red json"] =
        R"({"br10":{"hardwareAddress":"02:00:00:00:00:fe","ipAddresses":[)"
        R"({"address":"169.254.1.1/16"},{"address":"fe80::1/64"}]}})";
    EXPECT_EQ(routesOf(zebra.ask()),
              "router red port 169.254.1.1/16 vni 10 02:00:00:00:00:fe 10.0.0.1\n");
}

TEST(FrrVrfs, AnInterfaceWithoutAnEthernetAddressIsCountedIfItIsAPort) {
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

TEST(FrrVrfs, AVrfThatIsGoneDangles) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show interface vrf red json"] = "{}";
    auto const answer = zebra.ask();
    EXPECT_FALSE(answer.fits);
    EXPECT_EQ(routesOf(answer), "");
    EXPECT_EQ(answer.findings.warning(), "1 entry left out: VRF \"red\": no interfaces");
}

TEST(FrrVrfs, AVrfThatDoesNotExistYetIsNotAskedForAgain) {
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

TEST(FrrVrfs, AVrfWhoseL3VniIsDownKeepsItsPorts) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show vrf vni json"] = R"({"vrfs":[{"vrf":"red","vni":5001,"state":"Down"}]})";
    EXPECT_EQ(routesOf(zebra.ask()), redPort);
}

TEST(FrrVrfs, AVrfThatIsUpWithoutInterfacesIsAskedForAgain) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show vrf vni json"] = R"({"vrfs":[{"vrf":"red","vni":5001,"state":"Up"}]})";
    zebra["show interface vrf red json"] = "{}";
    EXPECT_FALSE(zebra.ask().fits);
    EXPECT_EQ(zebra.runs.size(), 6U);
}

TEST(FrrVrfs, ManyVrfsAreAskedForInSeveralRuns) {
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

TEST(FrrVrfs, AVrfWhoseNameIsNotAWordIsNotAskedFor) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show vrf vni json"] = R"({"vrfs":[{"vrf":"red json\nshow version"},{"vrf":"al"}]})";
    auto const answer = zebra.ask();
    EXPECT_EQ(zebra.runs.size(), 1U);
    EXPECT_EQ(answer.findings.warning(),
              "2 entries left out, the first: VRF \"al\", expected a name of printable ASCII "
              "without blanks and \"|\", not short for \"all\"");
}

TEST(FrrVrfs, ANameOfOddCharactersIsAskedFor) {
    auto zebra = zebraWithRoutes("{}");
    zebra["show vrf vni json"] = R"({"vrfs":[{"vrf":"blue;'$x'#?"}]})";
    zebra["show interface vrf blue;'$x'#? json"] = R"({"lo":{}})";
    zebra["show ip route vrf blue;'$x'#? json"] =
        R"({"10.1.0.0/16":[{"selected":true,"nexthops":[]}]})";
    EXPECT_EQ(linesOf(zebra.ask().facts, "router"), "router blue;'$x'#? route 10.1.0.0/16\n");
}

TEST(FrrVrfs, ARouteWithHostBitsIsOneToItsNetwork) {
    auto zebra = zebraWithRoutes(
        R"({"10.1.2.3/16":[{"selected":true,"nexthops":[{"ip":"10.0.0.7","active":true}]}]})");
    EXPECT_EQ(linesOf(zebra.ask().facts, "router red route"),
              "router red route 10.1.0.0/16 10.0.0.7\n");
}

} // namespace vxshow::test
