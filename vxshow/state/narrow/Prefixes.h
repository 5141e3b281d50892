#pragma once

#include "Nolt/IpGenPrefix.h"

namespace vxshow::state::narrow {

/// The highest address of a network: its address with all bits set beyond the prefix length. The
/// empty address for the prefix of no family.
constexpr Nolt::IpGenAddr lastAddress(Nolt::IpGenPrefix const & prefix) noexcept {
    auto const & address = prefix.address();
    auto const lowBits = [](unsigned count) {
        return count >= 64 ? ~Vex::U64{0} : (Vex::U64{1} << count) - 1;
    };
    unsigned const hostBits = address.bitLength() - prefix.length();
    switch (address.family()) {
    case Nolt::Family::ipv4:
        return Nolt::IpAddr(static_cast<Vex::U32>(address.low() | lowBits(hostBits)));
    case Nolt::Family::ipv6:
        return Nolt::IpGenAddr::ipv6(address.high() | lowBits(hostBits < 64 ? 0 : hostBits - 64),
                                     address.low() | lowBits(hostBits));
    case Nolt::Family::none:
        break;
    }
    return address;
}

} // namespace vxshow::state::narrow
