#include "vxshow/sources/ovsdb/Content.h"

namespace vxshow::sources::ovsdb {

std::optional<Vxlan::Vni> vniOfKey(std::int64_t key) {
    if (key < Vxlan::Vni::min || key > Vxlan::Vni::max) {
        return std::nullopt;
    }
    return Vxlan::Vni(static_cast<Vex::U32>(key));
}

std::optional<Nolt::EthAddr> hostMac(std::string_view text) {
    auto const mac = Nolt::EthAddr::tryFromString(text);
    return mac && !mac->isZero() ? mac : std::nullopt;
}

std::optional<Nolt::EthAddr> floodMac(std::string_view text) {
    return text == "unknown-dst" ? Nolt::EthAddr() : hostMac(text);
}

std::optional<Nolt::IpAddr> vtepIp(std::string_view text) {
    auto const ip = Nolt::IpAddr::tryFromString(text);
    return ip && !ip->isZero() ? ip : std::nullopt;
}

std::optional<Nolt::IpGenAddr> someIp(std::string_view text) {
    auto const ip = Nolt::IpGenAddr::tryFromString(text);
    return ip && !ip->isNone() ? ip : std::nullopt;
}

} // namespace vxshow::sources::ovsdb
