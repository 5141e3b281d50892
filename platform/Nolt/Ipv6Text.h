#pragma once

#include "Vex/Types.h"

#include <optional>
#include <string_view>

/// The text form of IPv6 addresses. It is not left to the C library, whose writer follows
/// no single rule for compressing zeros: tables are read by people and by scripts that
/// compare text.
namespace Nolt {

/// An IPv6 address as a 128-bit number in two halves; `high` holds the bits sent first.
struct Ipv6Halves {
    Vex::U64 high = 0;
    Vex::U64 low = 0;
};

/// Reads a whole text in any form of RFC 4291 section 2.2: eight groups of one to four
/// hexadecimal digits in either case; "::" once, for one or more zero groups; a dotted
/// quad in place of the last two groups. A zone (RFC 4007, "%eth0") is refused, since it
/// has a meaning only on one host. Returns nullopt for anything else.
std::optional<Ipv6Halves> readIpv6(std::string_view text) noexcept;

/// Writes the form of RFC 5952: lower case, no leading zeros, "::" for the longest run of
/// two or more zero groups, or the first such run if several are equally long; a dotted
/// quad for IPv4-mapped addresses (::ffff:0:0/96). `out` has room for 39 bytes, all of
/// which can be overwritten. Returns the end of the text.
char * writeIpv6(char * out, Ipv6Halves address) noexcept;

} // namespace Nolt
