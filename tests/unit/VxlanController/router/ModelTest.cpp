#include "Vex/Reinstantiation.h"
#include "VxlanController/VxlanControllerCliModel.h"

#include <gtest/gtest.h>

using namespace VxlanController::Cli;
using Nolt::IpGenAddr;
using Nolt::IpGenAddrWithMask;
using Nolt::IpGenPrefix;

namespace {

Vex::Ptr<VcsLRMap> emptyMap() {
    return vcsLRMapFactory(nullptr, nullptr, "", "", nullptr);
}

auto const address = IpGenAddr::fromString("10.0.0.1");

} // namespace

TEST(RouterModel, AFactoryCollectsNothing) {
    auto const map = vcsLRMapFactory(nullptr, nullptr, "red", "leaf1", vtepListFactory());
    EXPECT_EQ(map->lRNameFilter(), "red");
    EXPECT_EQ(map->switchFilter(), "leaf1");
    EXPECT_NE(map->vtepFilter(), nullptr);
    EXPECT_EQ(map->pathPrefix(), "vxlancontroller/version2/logicalRouter/");
    auto const detail = vcsLRFactory(nullptr, nullptr, Vex::makePtr<Vex::Dir>(), true, "red");
    EXPECT_TRUE(detail->vniDotted());
    EXPECT_TRUE(detail->lRDetail().empty());
    EXPECT_TRUE(detail->hasNotificationActive());
    auto const routes = vcsLRRouteFactory(Vex::makePtr<Vex::Dir>(), "red", IpGenPrefix());
    EXPECT_EQ(routes->prefixFilter(), IpGenPrefix());
    EXPECT_TRUE(routes->lRRouteByName().empty());
}

TEST(RouterModel, TwoRoutersHoldTheSameSwitch) {
    auto const map = emptyMap();
    auto const leaf = map->switchMapIs("leaf1", address);
    map->lRMapIs("red")->switchListIs(leaf);
    map->lRMapIs("blue")->switchListIs(leaf);
    EXPECT_EQ(map->lRMap("red")->switchList("leaf1"), leaf);
    EXPECT_EQ(map->lRMap("blue")->switchList("leaf1"), leaf);
}

TEST(RouterModel, AKnownSwitchWithTheSameVtepIsFound) {
    auto const map = emptyMap();
    auto const leaf = map->switchMapIs("leaf1", address);
    EXPECT_EQ(map->switchMapIs("leaf1", address), leaf);
    EXPECT_EQ(map->switchMap().size(), 1U);
}

TEST(RouterModel, AKnownSwitchWithAnotherVtepRaisesAndKeepsTheFirst) {
    auto const map = emptyMap();
    auto const leaf = map->switchMapIs("leaf1", address);
    try {
        map->switchMapIs("leaf1", IpGenAddr::fromString("10.0.0.2"));
        FAIL() << "nothing was thrown";
    } catch (Vex::ReinstantiationError const & error) {
        EXPECT_STREQ(error.what(), "VxlanController::Cli::SwitchMap leaf1: vtepAddr cannot change "
                                   "from 10.0.0.1 to 10.0.0.2");
    }
    EXPECT_EQ(map->switchMap("leaf1"), leaf);
    EXPECT_EQ(leaf->vtepAddr(), address);
}

TEST(RouterModel, FindingARouterKeepsItsContents) {
    auto const map = emptyMap();
    auto const red = map->lRMapIs("red");
    red->switchListIs(map->switchMapIs("leaf1", address));
    EXPECT_EQ(map->lRMapIs("red"), red);
    EXPECT_EQ(red->switchList().size(), 1U);
}

TEST(RouterModel, UplinksThatDifferInOnePortAreNotEqual) {
    LRIpUplinkPortAddress a(IpGenAddrWithMask::fromString("10.0.0.1/24"));
    a.portIs("Ethernet1", true);
    LRIpUplinkPortAddress b = a;
    EXPECT_TRUE(a == b);
    b.portIs("Ethernet2", true);
    EXPECT_FALSE(a == b);
    b.portDel("Ethernet2");
    EXPECT_TRUE(a == b);
    b.portDel("Ethernet1");
    b.portIs("Ethernet3", true);
    EXPECT_FALSE(a == b);
}

TEST(RouterModel, UplinksThatDifferInAnyAttributeAreNotEqual) {
    LRIpUplinkPortAddress const a(IpGenAddrWithMask::fromString("10.0.0.1/24"));
    EXPECT_FALSE(a == LRIpUplinkPortAddress(IpGenAddrWithMask::fromString("10.0.0.1/25")));
    LRIpUplinkPortAddress b = a;
    b.vlanIdIs(Bridging::VlanIdOrNone(1));
    EXPECT_FALSE(a == b);
    b = a;
    b.macIs(Nolt::EthAddr::fromString("02:00:00:00:00:01"));
    EXPECT_FALSE(a == b);
    b = a;
    b.switchIdIs("leaf1");
    EXPECT_FALSE(a == b);
    b = a;
    b.vtepIs(address);
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(!a);
    EXPECT_TRUE(!LRIpUplinkPortAddress());
}

TEST(RouterModel, APortOrAnUplinkOfTheSameAddressIsOverwritten) {
    auto const detail = vcsLRFactory(nullptr, nullptr, nullptr, false, "")->lRDetailIs("red");
    auto const ip = IpGenAddrWithMask::fromString("10.0.0.1/24");
    detail->ipPortIs({ip, Vxlan::Vni(1), {}, {}});
    detail->ipPortIs({ip, Vxlan::Vni(2), {}, {}});
    EXPECT_EQ(detail->ipPort().size(), 1U);
    EXPECT_EQ(detail->ipPort(ip).vni(), Vxlan::Vni(2));
    LRIpUplinkPortAddress uplink(ip);
    detail->ipUplinkPortIs(uplink);
    uplink.switchIdIs("leaf1");
    detail->ipUplinkPortIs(uplink);
    EXPECT_EQ(detail->ipUplinkPort().size(), 1U);
    EXPECT_EQ(detail->ipUplinkPort(ip).switchId(), "leaf1");
}

TEST(RouterModel, RoutesAndNexthopsAreOrderedByAddress) {
    auto const routes = vcsLRRouteFactory(nullptr, "", IpGenPrefix())->lRRouteByNameIs("red");
    for (char const * prefix : {"::/0", "10.0.0.0/16", "9.0.0.0/8", "10.0.0.0/8", "0.0.0.0/0"}) {
        auto const route = routes->lRRouteIs(IpGenPrefix::fromString(prefix));
        EXPECT_EQ(routes->lRRouteIs(route->prefix()), route);
    }
    auto const route = routes->lRRouteIs(IpGenPrefix::fromString("::/0"));
    for (char const * nexthop : {"::1", "10.0.0.10", "10.0.0.9"}) {
        route->nexthopIs(IpGenAddr::fromString(nexthop), true);
    }
    std::string order;
    for (LRRoute const & each : routes->lRRoute()) {
        order += each.prefix().stringValue() + " ";
    }
    for (IpGenAddr const & nexthop : route->nexthop()) {
        order += nexthop.stringValue() + " ";
    }
    EXPECT_EQ(order, "0.0.0.0/0 9.0.0.0/8 10.0.0.0/8 10.0.0.0/16 ::/0 10.0.0.9 10.0.0.10 ::1 ");
}
