#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpGenPrefix.h"
#include "Vxlan/VniOrNone.h"
#include "vxshow/state/narrow/Intervals.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// The values of filters, as they are typed: several, with commas between them or by repeating the
/// option.
///
/// One plain value goes to the library, whose filters take one. Anything more, such as a list, a
/// range or a subnet, narrows the mount (`state/narrow`). So each filter has a part for either, of
/// which at most one is set; if neither is, the filter lets everything through.
namespace vxshow::cli::filter {

/// A value is invalid. The message says which, and what is accepted: "'x': expected a VNI".
class ValueError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The texts of one option, one for each time it was given.
using Texts = std::vector<std::string>;

struct VniFilter {
    Vxlan::VniOrNone one = {};
    state::narrow::Intervals<Vxlan::Vni> many = {};
};

struct MacFilter {
    Nolt::EthAddr one = {}; ///< zero: every address
    state::narrow::Intervals<Nolt::EthAddr> many = {};
};

struct IpFilter {
    Nolt::IpGenAddr one = {};
    state::narrow::Intervals<Nolt::IpGenAddr> many = {};
};

struct PrefixFilter {
    Nolt::IpGenPrefix one = {};
    state::narrow::Intervals<Nolt::IpGenAddr> many = {}; ///< the addresses of the prefixes
};

/// The library takes several VTEPs, but no subnets. Both parts can be set: either is let through.
struct VtepFilter {
    std::vector<Nolt::IpAddr> addresses = {};
    state::narrow::Intervals<Nolt::IpAddr> subnets = {};

    bool isNone() const noexcept { return addresses.empty() && subnets.empty(); }
};

/// The parts of `text` between commas; one, the text itself, if it has none.
std::vector<std::string_view> splitAtCommas(std::string_view text);

/// Reads VNIs and ranges of them: 10, 0.16.2, 20-30. Raises `ValueError`.
VniFilter readVnis(Texts const & texts);

/// Reads MAC addresses in any form, with twelve digits and no separators as well, and prefixes of
/// them: 00:1c:73/24, 00:1c:73:*. An all-zero address lets every address through; with the length
/// 48 it is that address alone. Raises `ValueError`.
MacFilter readMacs(Texts const & texts);

/// The MAC address in any form that `readMacs` takes for one address; nullopt if it is invalid.
std::optional<Nolt::EthAddr> readMac(std::string_view text);

/// Reads addresses and subnets, IPv4 and IPv6. Raises `ValueError`.
IpFilter readIps(Texts const & texts);

/// Reads IPv4 addresses and subnets. Raises `ValueError`.
VtepFilter readVteps(Texts const & texts);

/// Reads prefixes, IPv4 and IPv6. Raises `ValueError`.
PrefixFilter readPrefixes(Texts const & texts);

} // namespace vxshow::cli::filter
