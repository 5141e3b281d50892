#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <gtest/gtest.h>

/// The switch and the VTEP that a VTEP of FRR has in the map of routers.
namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

std::string l3Vni(unsigned vni, std::string const & vrf, std::string const & vtep,
                  std::string const & routerMac) {
    return R"({"vni":)" + std::to_string(vni) + R"(,"type":"L3","tenantVrf":")" + vrf +
           R"(","localVtepIp":")" + vtep + R"(","routerMac":")" + routerMac + "\"}";
}

std::string vrf(std::string const & name, std::string const & state) {
    return R"({"vrf":")" + name + R"(","state":")" + state + "\"}";
}

/// Has the L2 VNI 10 at 10.0.0.1 in VRF red, these L3 VNIs, and these VRFs.
FakeZebra zebraWithRouters(std::string const & l3Vnis, std::string const & vrfs) {
    FakeZebra zebra;
    zebra["show evpn vni detail json"] = "[" + l2Vni(10) + "," + l3Vnis + "]";
    zebra["show vrf vni json"] = R"({"vrfs":[)" + vrfs + "]}";
    for (auto const * const name : {"red", "blue", "green"}) {
        zebra["show interface vrf " + std::string(name) + " json"] = R"({"lo":{}})";
    }
    return zebra;
}

Answer askWithoutIdentifier(FakeZebra & zebra, state::Selection const & selection = {}) {
    return converse(zebra.run(), {.name = "leaf1"}, selection);
}

std::string switchOf(Answer const & answer) {
    return linesOf(answer.facts, "switch");
}

} // namespace

TEST(FrrRouterMap, TheVtepIsTheLowestOfTheL3VnisThatAreUp) {
    auto zebra =
        zebraWithRouters(l3Vni(9001, "red", "10.0.1.9", "02:00:00:00:00:09") + "," +
                             l3Vni(9002, "blue", "10.0.1.4", "02:00:00:00:00:04") + "," +
                             l3Vni(9003, "green", "10.0.1.1", "02:00:00:00:00:01"),
                         vrf("red", "Up") + "," + vrf("blue", "Up") + "," + vrf("green", "Down"));
    EXPECT_EQ(switchOf(askWithoutIdentifier(zebra)),
              "switch leaf1 id 02:00:00:00:00:04 vtep 10.0.1.4 router blue router green router "
              "red\n");
}

TEST(FrrRouterMap, WithoutAnL3VniThatIsUpThereIsNoVtep) {
    auto zebra =
        zebraWithRouters(l3Vni(9001, "red", "10.0.1.9", "02:00:00:00:00:09"), vrf("red", "Down"));
    EXPECT_EQ(switchOf(zebra.ask()), "switch leaf1 id 00:00:5e:00:53:e1 router red\n");
}

TEST(FrrRouterMap, TheFabricFilesIdentifierComesFirst) {
    auto zebra =
        zebraWithRouters(l3Vni(9001, "red", "10.0.1.9", "02:00:00:00:00:09"), vrf("red", "Up"));
    EXPECT_EQ(switchOf(zebra.ask()),
              "switch leaf1 id 00:00:5e:00:53:e1 vtep 10.0.1.9 router red\n");
}

TEST(FrrRouterMap, WithoutAnIdentifierThereIsARemark) {
    auto zebra = zebraWithRouters(l3Vni(9001, "red", "0.0.0.0", "None"), vrf("red", "Down"));
    auto const answer = askWithoutIdentifier(zebra);
    EXPECT_EQ(switchOf(answer), "switch leaf1 id none router red\n");
    EXPECT_EQ(
        answer.findings.warning(),
        "in no map of routers: the fabric file has no system_id for it, and no L3 VNI that is "
        "up has a router MAC");
    state::Selection macs;
    macs.routers = false;
    EXPECT_FALSE(askWithoutIdentifier(zebra, macs).findings.warning());
}

TEST(FrrRouterMap, WithoutARouterThereIsNoRemark) {
    auto zebra = zebraWithMacs("");
    EXPECT_FALSE(askWithoutIdentifier(zebra).findings.warning());
}

} // namespace vxshow::test
