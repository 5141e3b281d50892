#include "state/LRStatusV2.h"

#include "Vex/AnyValue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace VxlanController;
using Bridging::VlanIdOrNone;
using Nolt::EthAddr;
using Nolt::IpGenAddr;
using Nolt::IpGenAddrWithMask;
using Nolt::IpGenPrefix;

namespace {

auto const prefix = IpGenPrefix::fromString("10.1.0.0/16");
auto const ip = IpGenAddrWithMask::fromString("10.0.0.1/24");
auto const otherIp = IpGenAddrWithMask::fromString("10.0.0.1/25");
auto const mac = EthAddr::fromString("02:00:00:00:00:01");
auto const portVtep = IpGenAddr::fromString("10.9.0.1");

/// The ports of an uplink in iteration order.
std::string walked(std::vector<PortVlanPairV2> const & pairs) {
    LRIpUplinkPortV2 uplink(ip, mac, portVtep);
    for (PortVlanPairV2 const & pair : pairs) {
        uplink.portVlanIs(pair);
    }
    std::string text;
    for (PortVlanPairV2 const & pair : uplink.portVlan()) {
        text += pair.port + "." + pair.vlan.stringValue() + " ";
    }
    return text;
}

} // namespace

TEST(LRStatusV2, InitiallyHasOnlyItsName) {
    auto const status = Vex::makePtr<LRStatusV2>("red");
    EXPECT_EQ(status->name(), "red");
    EXPECT_TRUE(status->route().empty());
    EXPECT_TRUE(status->ipPort().empty());
    EXPECT_TRUE(status->ipUplinkPort().empty());
}

TEST(LRStatusV2, AWriterOverwritesTheEntryWithItsKeyAndReportsIt) {
    auto const status = Vex::makePtr<LRStatusV2>("red");
    EXPECT_TRUE(status->ipPortIs(LRIpPortV2(ip, Vxlan::Vni(1), mac, portVtep)));
    EXPECT_FALSE(status->ipPortIs(LRIpPortV2(ip, Vxlan::Vni(2), mac, portVtep)));
    EXPECT_TRUE(status->ipPortIs(LRIpPortV2(otherIp, Vxlan::Vni(3), mac, portVtep)));
    EXPECT_EQ(status->ipPort().size(), 2U);
    EXPECT_EQ(status->ipPort().find(ip)->element().vni(), Vxlan::Vni(2));

    EXPECT_TRUE(status->ipUplinkPortIs(LRIpUplinkPortV2(ip, mac, portVtep)));
    EXPECT_FALSE(status->ipUplinkPortIs(LRIpUplinkPortV2(ip, EthAddr(), portVtep)));
    EXPECT_EQ(status->ipUplinkPort().size(), 1U);
    EXPECT_EQ(status->ipUplinkPort().find(ip)->element().mac(), EthAddr());

    LRRouteV2 route(prefix);
    route.nexthopIs(portVtep);
    EXPECT_TRUE(status->routeIs(LRRouteV2(prefix)));
    EXPECT_FALSE(status->routeIs(route));
    EXPECT_EQ(status->route().size(), 1U);
    EXPECT_EQ(status->route().find(prefix)->element().nexthop().size(), 1U);
}

TEST(LRStatusV2, PortsDifferInEveryField) {
    LRIpPortV2 const port(ip, Vxlan::Vni(1), mac, portVtep);
    EXPECT_EQ(port, LRIpPortV2(ip, Vxlan::Vni(1), mac, portVtep));
    EXPECT_NE(port, LRIpPortV2(otherIp, Vxlan::Vni(1), mac, portVtep));
    EXPECT_NE(port, LRIpPortV2(ip, Vxlan::Vni(2), mac, portVtep));
    EXPECT_NE(port, LRIpPortV2(ip, Vxlan::Vni(1), EthAddr(), portVtep));
    EXPECT_NE(port, LRIpPortV2(ip, Vxlan::Vni(1), mac, IpGenAddr()));
}

TEST(LRStatusV2, APortHasAStringFormForGenericTools) {
    EXPECT_EQ(Vex::AnyValue(LRIpPortV2(IpGenAddrWithMask::fromString("10.1.0.1/24"), Vxlan::Vni(10),
                                       EthAddr::fromString("02:00:00:00:00:0a"),
                                       IpGenAddr::fromString("2001:db8::1")))
                  .text(),
              "Value('VxlanController::LRIpPortV2', ** {'ip': 10.1.0.1/24, 'vni': 10, "
              "'mac': 02:00:00:00:00:0a, 'vtep': 2001:db8::1})");
}

TEST(LRStatusV2, ANexthopIsStoredOnce) {
    LRRouteV2 route(prefix);
    EXPECT_TRUE(route.nexthopIs(portVtep));
    EXPECT_FALSE(route.nexthopIs(portVtep));
    EXPECT_TRUE(route.nexthopIs(IpGenAddr::fromString("::1")));
    EXPECT_EQ(route.nexthop().size(), 2U);
}

TEST(LRStatusV2, APortOfAnUplinkCanHaveSeveralVlans) {
    EXPECT_EQ(walked({{"Et1", VlanIdOrNone(7)}, {"Et1", VlanIdOrNone(7)}}), "Et1.7 ");
    std::string const two = walked({{"Et1", VlanIdOrNone(7)}, {"Et1", VlanIdOrNone(8)}});
    EXPECT_NE(two.find("Et1.7 "), two.npos);
    EXPECT_NE(two.find("Et1.8 "), two.npos);
}

TEST(LRStatusV2, TheOrderOfAnUplinksPortsDependsOnlyOnTheContent) {
    std::vector<PortVlanPairV2> pairs;
    for (Vex::U16 i = 0; i < 60; ++i) {
        pairs.push_back({Vex::String("Et" + std::to_string(i % 12)), VlanIdOrNone(i)});
    }
    std::string const expected = walked(pairs);
    EXPECT_EQ(std::count(expected.begin(), expected.end(), ' '), 60);
    std::reverse(pairs.begin(), pairs.end());
    EXPECT_EQ(walked(pairs), expected);
    std::rotate(pairs.begin(), pairs.begin() + 23, pairs.end());
    EXPECT_EQ(walked(pairs), expected);
}

TEST(LRStatusV2, HoldsManyRoutes) {
    auto const status = Vex::makePtr<LRStatusV2>("red");
    for (Vex::U32 i = 0; i < 50'000; ++i) {
        EXPECT_TRUE(status->routeIs(LRRouteV2(IpGenPrefix(Nolt::IpAddr(i << 8), 24))));
    }
    EXPECT_EQ(status->route().size(), 50'000U);
    EXPECT_NE(status->route().find(IpGenPrefix(Nolt::IpAddr(49'999U << 8), 24)), nullptr);
    EXPECT_EQ(status->route().find(IpGenPrefix(Nolt::IpAddr(50'000U << 8), 24)), nullptr);
}

TEST(LRStatusV2, IsAnEntityTrackedUnderItsName) {
    auto const before = Vex::allocTrackLiveCount("VxlanController::LRStatusV2");
    Vex::Ptr<Vex::Entity const> const entity = Vex::makePtr<LRStatusV2>("red");
    EXPECT_EQ(Vex::allocTrackLiveCount("VxlanController::LRStatusV2"), before + 1);
    EXPECT_NE(Vex::dynamicPtr<LRStatusV2 const>(entity), nullptr);
}
