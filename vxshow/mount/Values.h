#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Vxlan/Vni.h"
#include "vxshow/mount/Json.h"

/// The values that tables are made of. Each function throws `Refusal` when the text is not
/// the whole of such a value.
namespace vxshow {

inline constexpr std::string_view anEthernetAddress =
    "an Ethernet address such as 00:1c:73:0a:0b:0c";
inline constexpr std::string_view anIpv4Address = "an IPv4 address such as 10.0.0.1";
inline constexpr std::string_view anObjectByMac = "an object whose members are Ethernet addresses";

/// In any of the three forms of `Nolt::EthAddr`.
Nolt::EthAddr readMac(JsonText const & text);

Nolt::IpAddr readIpv4(JsonText const & text);

/// IPv4 or IPv6; the empty text is neither.
Nolt::IpGenAddr readIp(JsonText const & text);

/// In decimal: it is a key, so it is not read in the dotted form that people may type.
Vxlan::Vni readVni(JsonText const & text);

/// Where a unicast MAC address is.
struct Binding {
    Nolt::IpAddr vtep;
    Vex::U32 moves = 0;
};

/// `{ "vtep": IPv4, "moves": N }`, without moves when there were none.
Binding readBinding(JsonValue value);

/// `[ IPv4, … ]`: hands each to `insert`, which answers whether it is new, as it must be.
template <class Insert>
void readVteps(JsonValue value, Insert && insert) {
    value.texts("a list of IPv4 addresses", anIpv4Address, [&](JsonText const & text) {
        if (!insert(readIpv4(text))) [[unlikely]] {
            text.refuseAgain();
        }
    });
}

} // namespace vxshow
