#pragma once

#include "state/LRStatusV2.h"
#include "state/PublishStatus.h"
#include "state/SwitchInfoDir.h"

#include "Vex/Dir.h"

#include <string>

/// The logical-router states that are measured: 1,000,000 routes, over 1,000 routers (wide) or
/// in one (deep), and 10,000 routers on 100 switches.
namespace bench {

inline constexpr Vex::U32 routes = 1'000'000;
inline constexpr Vex::U32 wideRouters = 1000;
inline constexpr Vex::U32 manyRouters = 10'000;
inline constexpr Vex::U32 routerSwitches = 100;

inline Vex::String routerName(Vex::U32 n) {
    return "tenant-" + std::to_string(n);
}

/// The n-th route in hash order: a scattered /24 or /64, with each network once; every eighth
/// one is IPv6, every fourth one has four equal-cost nexthops.
inline VxlanController::LRRouteV2 scatteredRoute(Vex::U32 n) {
    Vex::U32 const scattered = (n * 2654435761U) & 0x00FF'FFFFU;
    auto const address = n % 8 == 0 ? Nolt::IpGenAddr::ipv6(0x2001'0db8'0000'0000U + scattered, 0)
                                    : Nolt::IpGenAddr(Nolt::IpAddr(scattered << 8));
    VxlanController::LRRouteV2 route(Nolt::IpGenPrefix(address, n % 8 == 0 ? 64 : 24));
    for (Vex::U32 hop = 0; hop < (n % 4 == 0 ? 4U : 1U); ++hop) {
        route.nexthopIs(Nolt::IpGenAddr(Nolt::IpAddr(0x0A00'0001U + (n + hop) % 512)));
    }
    return route;
}

/// The directory of router status: `routes` divided among `routers`.
inline Vex::Ptr<Vex::Dir> routedRouters(Vex::U32 routers) {
    auto const directory = Vex::makePtr<Vex::Dir>();
    Vex::U32 const each = routes / routers;
    for (Vex::U32 number = 0; number < routers; ++number) {
        auto const status = Vex::makePtr<VxlanController::LRStatusV2>(routerName(number));
        for (Vex::U32 n = number * each; n < (number + 1) * each; ++n) {
            status->routeIs(scatteredRoute(n));
        }
        directory->entityIs(status->name(), status);
    }
    return directory;
}

inline VxlanController::LRIpUplinkPortV2 uplinkOf(Vex::U32 router) {
    VxlanController::LRIpUplinkPortV2 uplink(
        Nolt::IpGenAddrWithMask(Nolt::IpGenAddr(Nolt::IpAddr(0xC000'0000U + router)), 31), {}, {});
    for (int port = 1; port <= 4; ++port) {
        uplink.portVlanIs({"Ethernet" + std::to_string(port),
                           Bridging::VlanIdOrNone(static_cast<Vex::U16>(router % 4094 + 1))});
    }
    return uplink;
}

/// Ten IP ports and one uplink port per router.
inline Vex::Ptr<Vex::Dir> portedRouters() {
    auto const directory = Vex::makePtr<Vex::Dir>();
    for (Vex::U32 number = 0; number < manyRouters; ++number) {
        auto const status = Vex::makePtr<VxlanController::LRStatusV2>(routerName(number));
        for (Vex::U32 port = 0; port < 10; ++port) {
            Nolt::IpGenAddr const ip(Nolt::IpAddr(0x0A00'0000U + (number << 8) + port));
            status->ipPortIs({Nolt::IpGenAddrWithMask(ip, 28), Vxlan::Vni(number * 10 + port),
                              Nolt::EthAddr(), Nolt::IpGenAddr(Nolt::IpAddr(0x0A00'0001U))});
        }
        status->ipUplinkPortIs(uplinkOf(number));
        directory->entityIs(status->name(), status);
    }
    return directory;
}

/// The switch information: one active VTEP for each switch.
inline Vex::Ptr<VxlanController::SwitchInfoDir> routerSwitchInfo() {
    auto const directory = Vex::makePtr<VxlanController::SwitchInfoDir>();
    for (Vex::U32 number = 0; number < routerSwitches; ++number) {
        Nolt::EthAddr const id({2, 0, 0, 0, 0, static_cast<Vex::U8>(number)});
        Nolt::IpGenAddr const address(Nolt::IpAddr(0x0A00'0001U + number));
        auto const vtep = directory->vtepMapIs(address);
        vtep->activeIs(true);
        vtep->switchIdIs({id.stringValue(), ""});
        directory->switchInfoIs(id.stringValue())->vtepMapIs({address, ""}, vtep);
    }
    return directory;
}

/// What the switches publish: each router on ten of them.
inline Vex::Ptr<Statestore::PublishStatus> publishedRouters() {
    auto const status = Vex::makePtr<Statestore::PublishStatus>();
    for (Vex::U32 number = 0; number < manyRouters; ++number) {
        for (Vex::U32 copy = 0; copy < 10; ++copy) {
            auto const at = static_cast<Vex::U8>((number + copy * 10) % routerSwitches);
            Controller::SystemId const system(Nolt::EthAddr({2, 0, 0, 0, 0, at}));
            status->systemIs(system)->publishedMountIs(
                {"vxlancontroller/version2/logicalRouter/" + routerName(number), "Vxlan"});
        }
    }
    return status;
}

} // namespace bench
