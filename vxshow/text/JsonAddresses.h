#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Nolt/IpGenPrefix.h"
#include "Vxlan/Vni.h"
#include "vxshow/text/Json.h"

/// The values that tables are made of. Each function throws `Refusal` when the text is not
/// the whole of such a value.
namespace vxshow::text {

inline constexpr std::string_view anEthernetAddress =
    "an Ethernet address such as 00:1c:73:0a:0b:0c";
inline constexpr std::string_view anIpv4Address = "an IPv4 address such as 10.0.0.1";
inline constexpr std::string_view anIpAddress =
    "an IPv4 or IPv6 address such as 10.0.0.1 or 2001:db8::1";
inline constexpr std::string_view anObjectByMac = "an object whose members are Ethernet addresses";

/// One value may be spelled in several ways, so keys that differ can be the same: only the
/// table knows. Throws the `Refusal` of the second one unless `isNew`.
inline void onlyNew(bool isNew, JsonText const & key) {
    if (!isNew) [[unlikely]] {
        key.refuseAgain();
    }
}

/// In any of the three forms of `Nolt::EthAddr`.
Nolt::EthAddr readMac(JsonText const & text);

Nolt::IpAddr readIpv4(JsonText const & text);

/// IPv4 or IPv6; the empty text is neither.
Nolt::IpGenAddr readIp(JsonText const & text);

/// ADDRESS/LENGTH, whatever its host bits; the empty text is none.
Nolt::IpGenAddrWithMask readIpWithMask(JsonText const & text);

/// ADDRESS/LENGTH without host bits; the refusal of one that has some tells which prefix was
/// likely meant. The empty text is none.
Nolt::IpGenPrefix readPrefix(JsonText const & text);

/// In decimal: it is a key, so it is not read in the dotted form that people may type.
Vxlan::Vni readVni(JsonText const & text);

/// `[ IPv4, … ]`: calls `insert` with each, which returns whether it is new, as it must be.
template <class Insert>
void readVteps(JsonValue & value, Insert && insert) {
    value.texts("a list of IPv4 addresses", anIpv4Address,
                [&](JsonText const & text) { onlyNew(insert(readIpv4(text)), text); });
}

} // namespace vxshow::text
