#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Vxlan/Vni.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// What texts and keys stand for in a `hardware_vtep` database. Nobody checks them there, so each
/// function gives nothing for one that stands for nothing.
namespace vxshow::sources::ovsdb {

inline constexpr std::string_view aKey = "a VNI from 0 to 16777215";

/// The VNI that a tunnel_key, any number, is.
std::optional<Vxlan::Vni> vniOfKey(std::int64_t key);

/// An address of one host: not the zero one, which stands for everything else.
std::optional<Nolt::EthAddr> hostMac(std::string_view text);

/// The address to which frames for `text` are flooded; the zero one for `unknown-dst`, which is
/// broadcast and every address that has no row of its own.
std::optional<Nolt::EthAddr> floodMac(std::string_view text);

/// Zero is nobody's address: a listing that showed it would seem to know one.
std::optional<Nolt::IpAddr> vtepIp(std::string_view text);

/// IPv4 or IPv6; the empty text is neither.
std::optional<Nolt::IpGenAddr> someIp(std::string_view text);

} // namespace vxshow::sources::ovsdb
