#include "tests/live/Hostile.h"
#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

constexpr char const * vnis = R"([ { "vni":10, "type":"L2", "vrf":"default",
  "vxlanInterface":"vx10", "ifindex":3, "sviInterface":"br10", "sviIfindex":2,
  "vtepIp":"10.0.0.1", "mcastGroup":"0.0.0.0", "advertiseGatewayMacip":"No",
  "advertiseSviMacip":"No", "numMacs":1, "numArpNd":0, "numRemoteVteps":[ "10.0.0.2" ] } ])";

constexpr char const * macs = R"({ "10":{ "numMacs":1, "macs":{
  "02:00:10:00:01:01":{ "type":"local", "intf":"host10", "uptime":"00:00:07", "localSequence":2,
    "remoteSequence":0, "detectionCount":0, "isDuplicate":false, "syncNeighCount":0,
    "neighbors":"none" } } } })";

/// A vtysh with one VNI and one local MAC address.
class Vtysh : public FakeVtysh {
public:
    explicit Vtysh(std::string const & behaviour) : FakeVtysh(behaviour) {
        answers("show evpn vni detail", vnis);
        answers("show evpn mac vni all", macs);
        answers("show evpn mac vni all detail", macs);
    }
};

class HostileVtysh : public testing::TestWithParam<Hostile> {
protected:
    void SetUp() override { VXSHOW_NEEDS_LAB(Lab::fake); }
};

Words const goodRows{"good              10          0200.1000.0101  10.0.0.1            2",
                     "good              10          0000.0000.0000  10.0.0.1       "};

} // namespace

TEST_P(HostileVtysh, IsReportedInTimeAndTheOthersAreShown) {
    Vtysh const hostile(GetParam().behaviour);
    Vtysh const good("answer");
    Folder const folder;
    FabricText text;
    text.vtysh("hostile", hostile.words(), GetParam().timeLimitLine());
    text.vtysh("good", good.words(), "time_limit = 30");
    auto const fabric = folder.write("fabric.toml", text.text());
    auto const start = std::chrono::steady_clock::now();
    auto const finished = ask({"--fabric", fabric, "mac", "received"});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(50));
    EXPECT_EQ(finished.status, 3);
    auto const failures = failuresOf(finished);
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].source, "hostile");
    EXPECT_TRUE(failures[0].text.starts_with(GetParam().reason)) << failures[0].text;
    EXPECT_EQ(rowsOf(finished.out), goodRows);
}

TEST_P(HostileVtysh, AllOrNothingShowsNothing) {
    Vtysh const hostile(GetParam().behaviour);
    Folder const folder;
    auto const fabric = folder.write(
        "fabric.toml",
        FabricText().vtysh("hostile", hostile.words(), GetParam().timeLimitLine()).text());
    auto const finished = ask({"--fabric", fabric, "--all-or-nothing", "mac", "received"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(failuresOf(finished).size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    Each, HostileVtysh,
    testing::Values(Hostile{"cut", "broken answer"}, Hostile{"garbage", "broken answer"},
                    Hostile{"deep", "broken answer"}, Hostile{"shape", "broken answer"},
                    Hostile{"unknown", "broken answer"}, Hostile{"unreachable", "unreachable"},
                    Hostile{"screen", "broken answer"}, Hostile{"blanks", "broken answer"},
                    Hostile{"silent", "time limit", 1}, Hostile{"stubborn", "time limit", 1},
                    Hostile{"trickle", "time limit", 1}),
    [](auto const & each) { return std::string(each.param.behaviour); });

TEST(OddVtysh, AVtyshWithoutAnswersHasFailedUnlessNoEvpnIsExpected) {
    VXSHOW_NEEDS_LAB(Lab::fake);
    FakeVtysh const empty("answer");
    Folder const folder;
    auto const fabric =
        folder.write("fabric.toml", FabricText().vtysh("leaf", empty.words()).text());
    auto const lenient = folder.write(
        "lenient.toml", FabricText().vtysh("leaf", empty.words(), "expects_evpn = false\n").text());
    for (Words const & listing : listings()) {
        auto const refused = ask(Words{"--fabric", fabric} + listing);
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.out, "");
        EXPECT_EQ(refused.err,
                  "vxshow: leaf: EVPN is not active: zebra holds no VNIs, as when bgpd is down or "
                  "does not advertise them; expects_evpn = false in the fabric file accepts a "
                  "source without EVPN\n");
        auto const accepted = ask(Words{"--fabric", lenient} + listing);
        EXPECT_EQ(accepted.status, 0);
        EXPECT_EQ(rowsOf(accepted.out), Words{});
        EXPECT_EQ(accepted.err, "");
    }
}

TEST(OddVtysh, AVtyshWithoutVnisIsAnEmptySource) {
    VXSHOW_NEEDS_LAB(Lab::fake);
    FakeVtysh const empty("answer");
    empty.answers("show evpn vni detail", "[\n]\n");
    Folder const folder;
    auto const fabric =
        folder.write("fabric.toml", FabricText().vtysh("leaf", empty.words()).text());
    expectSameListings({"--fabric", fabric}, expectedSnapshot(folder, fabric));
    for (char const * const side : {"received", "advertised"}) {
        EXPECT_EQ(rowsOf(shown({"--fabric", fabric, "mac", side})), Words{});
        EXPECT_EQ(rowsOf(shown({"--fabric", fabric, "arp", side})), Words{});
    }
    EXPECT_EQ(shown({"--fabric", fabric, "router", "map"}),
              "--------------------------------------------------------------------------------\n"
              "Name                                           VTEP            Switch           \n"
              "--------------------------------------------------------------------------------\n"
              "\n"
              "Total entries for this criterion: 0\n"
              "\n");
    EXPECT_EQ(
        shown({"--fabric", fabric, "router", "detail"}),
        "--------------------------------------------------------------------------------\n"
        "Name                                              IP Address         VNI        \n"
        "--------------------------------------------------------------------------------\n"
        "\n"
        "Total entries for this criterion: 0\n"
        "\n"
        "Uplink ports:\n"
        "--------------------------------------------------------------------------------\n"
        "Name        IP Address         Switch            Vlan Ports                         \n"
        "--------------------------------------------------------------------------------\n"
        "\n"
        "Total entries for this criterion: 0\n"
        "\n");
    EXPECT_EQ(shown({"--fabric", fabric, "router", "routes"}),
              "--------------------------------------------------------------------------------\n"
              "Name        Prefix             Nexthop                                          \n"
              "--------------------------------------------------------------------------------\n"
              "\n"
              "Total entries for this criterion: 0\n"
              "\n");
}
