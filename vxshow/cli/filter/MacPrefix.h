#pragma once

#include "Nolt/EthAddr.h"
#include "vxshow/state/narrow/Intervals.h"

#include <optional>
#include <string_view>

namespace vxshow::cli::filter {

/// The address of twelve digits without separators, 001c730a0b0c; nullopt if it is invalid.
std::optional<Nolt::EthAddr> readBareMac(std::string_view text);

/// Whether the text is meant as a prefix: it has a slash or a star.
bool isMacPrefix(std::string_view text);

/// The addresses that begin with a prefix, such as 00:1c:73/24, 00:1c:73:00:00:00/24 or 00:1c:73:*.
/// Before the slash or star are whole bytes, with any of the separators of an address or none.
/// Raises `ValueError`, also if bits are set beyond the length.
state::narrow::Intervals<Nolt::EthAddr>::Interval readMacPrefix(std::string_view text);

} // namespace vxshow::cli::filter
