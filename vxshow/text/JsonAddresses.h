#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Nolt/IpGenPrefix.h"
#include "Vxlan/Vni.h"
#include "vxshow/text/Json.h"

#include <optional>

/// Readers of the values in tables. Unless it is named `tryRead…`, each function throws `Refusal`
/// if the text is not exactly one such value.
namespace vxshow::text {

inline constexpr std::string_view anEthernetAddress =
    "an Ethernet address such as 00:1c:73:0a:0b:0c";
inline constexpr std::string_view anIpv4Address = "an IPv4 address such as 10.0.0.1";
inline constexpr std::string_view anIpAddress =
    "an IPv4 or IPv6 address such as 10.0.0.1 or 2001:db8::1";
inline constexpr std::string_view anObjectByMac = "an object whose members are Ethernet addresses";

/// Throws the `Refusal` of a repeated key unless `isNew`. One value can be spelled in several ways,
/// so different texts can be the same key: only the table knows.
inline void onlyNew(bool isNew, JsonText const & key) {
    if (!isNew) [[unlikely]] {
        key.refuseAgain();
    }
}

/// Parses an Ethernet address in any of the three forms of `Nolt::EthAddr`; nullopt if it is
/// invalid. This and the next are inline, and try the usual form first, since a state has
/// millions of them.
inline std::optional<Nolt::EthAddr> tryReadMac(JsonText const & text) {
    constexpr auto usual = Nolt::EthAddr::maxTextLength;
    if (text.mayHaveLength(usual)) [[likely]] {
        if (auto const mac = Nolt::EthAddr::tryFromString({text.content(), usual})) [[likely]] {
            return mac;
        }
    }
    return Nolt::EthAddr::tryFromString(text.text());
}

/// Parses an IPv4 address; nullopt if it is invalid.
inline std::optional<Nolt::IpAddr> tryReadIpv4(JsonText const & text) {
    Nolt::IpAddr address;
    auto const * const end = Nolt::IpAddr::readFrom(text.content(), address);
    if (end && *end == '"') [[likely]] {
        return address;
    }
    return Nolt::IpAddr::tryFromString(text.text());
}

/// As `tryReadMac`.
Nolt::EthAddr readMac(JsonText const & text);

Nolt::IpAddr readIpv4(JsonText const & text);

/// IPv4 or IPv6. The empty text is invalid.
Nolt::IpGenAddr readIp(JsonText const & text);

/// ADDRESS/LENGTH, whatever its host bits. The empty text is invalid.
Nolt::IpGenAddrWithMask readIpWithMask(JsonText const & text);

/// ADDRESS/LENGTH without host bits; if there are any, the refusal names the prefix that was
/// probably meant. The empty text is invalid.
Nolt::IpGenPrefix readPrefix(JsonText const & text);

/// In decimal: keys are not read in the dotted form that people can type.
Vxlan::Vni readVni(JsonText const & text);

/// `[ IPv4, … ]`: calls `insert` with each address. It returns whether the address is new; a
/// repeated one is refused.
template <class Insert>
void readVteps(JsonValue & value, Insert && insert) {
    value.texts("a list of IPv4 addresses", anIpv4Address,
                [&](JsonText const & text) { onlyNew(insert(readIpv4(text)), text); });
}

} // namespace vxshow::text
