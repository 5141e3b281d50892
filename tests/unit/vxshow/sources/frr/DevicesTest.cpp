#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <gtest/gtest.h>

/// What depends on whether VXLAN devices are up.
namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

constexpr char const * statesQuestion = "show interface vrf all brief json";

std::string vniWithDevice(std::string const & members) {
    return R"({"vni":10,"type":"L2","vxlanInterface":"vx10","vtepIp":"10.0.0.1",)" + members + "}";
}

/// As zebra has it while its device is down, and while it is up but nothing was learned yet.
std::string const idle = vniWithDevice(R"("numMacs":0,"numArpNd":0)");

FakeZebra zebraWithVni(std::string const & vni) {
    FakeZebra zebra;
    zebra["show evpn vni detail json"] = "[" + vni + "]";
    zebra[statesQuestion] =
        R"({"lo":{"status":"up"},"vx10":{"status":"down","vrfName":"default"}})";
    return zebra;
}

bool asked(FakeZebra const & zebra) {
    return zebra.runs.size() == 1 && zebra.runs[0].back() == statesQuestion;
}

std::string floods(Answer const & answer) {
    return linesOf(answer.facts, "leaf1 flood");
}

std::string const flooded = "leaf1 flood 10 00:00:00:00:00:00 10.0.0.1\n";

} // namespace

TEST(FrrDevices, AVniWhoseDeviceIsDownIsNotInTheListsOfOthers) {
    auto zebra = zebraWithVni(idle);
    auto const answer = zebra.ask();
    EXPECT_TRUE(asked(zebra));
    EXPECT_EQ(floods(answer), "");
    EXPECT_EQ(linesOf(answer.facts, "leaf1 vni"), "leaf1 vni 10\n");
    EXPECT_FALSE(answer.findings.warning());
}

TEST(FrrDevices, AnIdleVniWhoseDeviceIsUpIsInTheListsOfOthers) {
    auto zebra = zebraWithVni(idle);
    zebra[statesQuestion] = R"({"vx10":{"status":"up"}})";
    EXPECT_EQ(floods(zebra.ask()), flooded);
    EXPECT_TRUE(asked(zebra));
}

TEST(FrrDevices, ADeviceThatIsNotListedCountsAsUp) {
    auto zebra = zebraWithVni(idle);
    zebra[statesQuestion] = R"({"vx11":{"status":"down"},"ptmStatus":"disabled"})";
    EXPECT_EQ(floods(zebra.ask()), flooded);
}

TEST(FrrDevices, AVniWithEntriesIsUp) {
    for (auto const * const members :
         {R"("numMacs":1,"numArpNd":0)", R"("numMacs":0,"numArpNd":1)",
          R"("numMacs":0,"numArpNd":0,"numRemoteVteps":["10.0.0.2"])",
          R"("numMacs":0,"numArpNd":0,"remoteVteps":[{"ip":"fd00::2","flood":"HER"}])"}) {
        auto zebra = zebraWithVni(vniWithDevice(members));
        EXPECT_EQ(floods(zebra.ask()), flooded) << members;
    }
}

TEST(FrrDevices, ACommandWithoutFloodListsAsksNothing) {
    state::Selection arp;
    arp.macTables = false;
    state::Selection const routers{.received = false, .advertised = false};
    for (auto const & selection : {arp, routers}) {
        auto zebra = zebraWithVni(idle);
        zebra.ask(selection);
        EXPECT_FALSE(asked(zebra));
    }
}

TEST(FrrDevices, AVersionThatDoesNotKnowTheCommandLeavesThemUnknown) {
    auto zebra = zebraWithVni(idle);
    zebra[statesQuestion] = "% Unknown command: show interface vrf all brief json\n";
    auto const answer = zebra.ask();
    EXPECT_EQ(floods(answer), flooded);
    EXPECT_EQ(answer.findings.warning(Subject::localMacs),
              "whether the VXLAN devices of VNIs without entries are up is not known: show "
              "interface vrf all brief json: vtysh says % Unknown command: show interface vrf all "
              "brief json");
    EXPECT_FALSE(answer.findings.warning(Subject::localBindings));
}

} // namespace vxshow::test
