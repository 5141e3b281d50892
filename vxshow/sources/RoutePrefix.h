#pragma once

#include "Nolt/IpGenAddrWithMask.h"
#include "Nolt/IpGenPrefix.h"

#include <optional>
#include <string_view>

namespace vxshow::sources {

/// Reads the prefix of a route. A static route can be written with host bits, 10.1.2.3/16, and is
/// one to 10.1.0.0/16 all the same. Returns nullopt for anything else, and for "".
inline std::optional<Nolt::IpGenPrefix> readRoutePrefix(std::string_view text) {
    auto const written = Nolt::IpGenAddrWithMask::tryFromString(text);
    if (!written || written->isNone()) {
        return std::nullopt;
    }
    return Nolt::IpGenPrefix::covering(written->address(), written->length());
}

} // namespace vxshow::sources
