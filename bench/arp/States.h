#pragma once

#include "bench/mac/States.h"
#include "state/VniFdbStatusV2.h"

/// The ARP states that are measured, 1,000,000 entries each, every fourth one of IPv6: wide
/// (many small tables) and deep (one table).
namespace bench {

inline constexpr Vex::U32 arpEntries = 1'000'000;
inline constexpr Vex::U32 wideArpVnis = 1000;
inline constexpr Vex::U32 wideArpSwitches = 100;

/// The n-th entry in hash order: scattered, with each address once.
inline VxlanController::ArpEntryV2 scatteredArp(Vex::U32 n) {
    Vex::U32 const scattered = n * 2654435761U;
    auto const ip = n % 4 == 0 ? Nolt::IpGenAddr::ipv6(0x2001'0db8'0000'0000U, scattered)
                               : Nolt::IpGenAddr(Nolt::IpAddr(scattered));
    return {ip, scatteredMac(n), 100, n % 7};
}

inline void addArp(VxlanController::VniTables & status, Vex::U32 first, Vex::U32 count) {
    for (Vex::U32 n = first; n < first + count; ++n) {
        status.arpIs(scatteredArp(n));
    }
}

/// The per-VNI directory of advertised state.
inline Vex::Ptr<Vex::Dir> advertisedArp(Vex::U32 vnis) {
    auto const directory = Vex::makePtr<Vex::Dir>();
    Vex::U32 const each = arpEntries / vnis;
    for (Vex::U32 vni = 0; vni < vnis; ++vni) {
        auto const status = Vex::makePtr<VxlanController::VniFdbStatusV2>();
        addArp(*status, vni * each, each);
        directory->entityIs(std::to_string(10'000 + vni), status);
    }
    return directory;
}

/// The directory of switches.
inline Vex::Ptr<Vex::Dir> receivedArp(Vex::U32 switches, Vex::U32 vnis) {
    auto const directory = Vex::makePtr<Vex::Dir>();
    Vex::U32 const each = arpEntries / switches / vnis;
    for (Vex::U32 number = 0; number < switches; ++number) {
        auto const dir = Vex::makePtr<VxlanController::VniStatusDirV2>();
        for (Vex::U32 vni = 0; vni < vnis; ++vni) {
            addArp(*dir->vniStatusV2Is(Vxlan::Vni(10'000 + vni)), (number * vnis + vni) * each,
                   each);
        }
        directory->entityIs("leaf" + std::to_string(number), dir);
    }
    return directory;
}

} // namespace bench
