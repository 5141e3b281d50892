#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Vxlan/Vni.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// Converts texts and keys of a `hardware_vtep` database. Servers do not validate them, so each
/// function returns nullopt for an invalid one.
namespace vxshow::sources::ovsdb {

inline constexpr std::string_view aKey = "a VNI from 0 to 16777215";

/// The VNI of a tunnel_key, which can be any number.
std::optional<Vxlan::Vni> vniOfKey(std::int64_t key);

/// The address of one host: not zero, which stands for every other address.
std::optional<Nolt::EthAddr> hostMac(std::string_view text);

/// The address whose frames are flooded; zero for `unknown-dst`, which stands for broadcast and
/// for every address without a row of its own.
std::optional<Nolt::EthAddr> floodMac(std::string_view text);

/// Not zero, which no VTEP has: a listing that showed it would seem to know an address.
std::optional<Nolt::IpAddr> vtepIp(std::string_view text);

/// IPv4 or IPv6; not the empty text.
std::optional<Nolt::IpGenAddr> someIp(std::string_view text);

} // namespace vxshow::sources::ovsdb
