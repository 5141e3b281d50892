#pragma once

#include "Vex/Dir.h"
#include "VxlanController/VxlanControllerCliModel.h"
#include "state/VniFdbStatusV2.h"
#include "state/VniStatusDirV2.h"

#include <string>

/// The two received states that are measured: wide (many small tables) and deep (one table).
namespace bench {

inline constexpr Vex::U32 wideSwitches = 128;
inline constexpr Vex::U32 wideVnis = 1000;
inline constexpr Vex::U32 wideMacs = 10;
inline constexpr Vex::U32 deepMacs = 1'000'000;

/// The n-th MAC address in hash order: scattered, with each number once.
inline Nolt::EthAddr scatteredMac(Vex::U32 n) {
    Vex::U32 const scattered = n * 2654435761U;
    auto const byte = [&](int shift) { return static_cast<Vex::U8>(scattered >> shift); };
    return Nolt::EthAddr({2, 0, byte(24), byte(16), byte(8), byte(0)});
}

inline void addSwitch(Vex::Dir & switches, Vex::U32 number, Vex::U32 vnis, Vex::U32 macs) {
    auto const dir = Vex::makePtr<VxlanController::VniStatusDirV2>();
    for (Vex::U32 vni = 0; vni < vnis; ++vni) {
        auto const status = dir->vniStatusV2Is(Vxlan::Vni(10'000 + vni));
        for (Vex::U32 mac = 0; mac < macs; ++mac) {
            status->macVtepIs(
                VxlanController::MacVtepV2(scatteredMac((number * vnis + vni) * macs + mac),
                                           Nolt::IpAddr(0x0A000001U + number), mac % 7));
        }
    }
    switches.entityIs("leaf" + std::to_string(number), dir);
}

inline Vex::Ptr<Vex::Dir> wideState() {
    auto const switches = Vex::makePtr<Vex::Dir>();
    for (Vex::U32 number = 0; number < wideSwitches; ++number) {
        addSwitch(*switches, number, wideVnis, wideMacs);
    }
    return switches;
}

inline Vex::Ptr<Vex::Dir> deepState() {
    auto const switches = Vex::makePtr<Vex::Dir>();
    addSwitch(*switches, 0, 1, deepMacs);
    return switches;
}

/// Advertised: a million MACs over a thousand VNIs.
inline constexpr Vex::U32 advertisedVnis = 1000;
inline constexpr Vex::U32 advertisedMacs = 1'000'000;

inline Vex::Ptr<Vex::Dir> advertisedState() {
    auto const entries = Vex::makePtr<Vex::Dir>();
    for (Vex::U32 vni = 0; vni < advertisedVnis; ++vni) {
        auto const status = Vex::makePtr<VxlanController::VniFdbStatusV2>();
        constexpr Vex::U32 macs = advertisedMacs / advertisedVnis;
        for (Vex::U32 mac = 0; mac < macs; ++mac) {
            status->macVtepIs(VxlanController::MacVtepV2(
                scatteredMac(vni * macs + mac), Nolt::IpAddr(0x0A000001U + mac % 128), mac % 7));
        }
        entries->entityIs(Vxlan::Vni(10'000 + vni).stringValue(), status);
    }
    return entries;
}

inline Vex::Ptr<VxlanController::Cli::VcsVniReceived>
receivedCommand(Vex::Ptr<Vex::Dir> const & switches) {
    namespace Cli = VxlanController::Cli;
    return Cli::vcsVniReceivedFactory(switches, nullptr, nullptr, false, Vxlan::VniOrNone(),
                                      Nolt::EthAddr(), "", Cli::vtepListFactory());
}

} // namespace bench
