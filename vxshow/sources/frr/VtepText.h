#pragma once

#include "Nolt/IpAddr.h"
#include "vxshow/text/Json.h"

namespace vxshow::sources::frr {

/// What zebra writes in the place of a VTEP's address.
struct VtepText {
    enum class Kind {
        ipv4,
        none, ///< there is no address: "0.0.0.0", or "(null)" since FRR 10.6
        ipv6, ///< since FRR 10.6
        other ///< not an address
    };

    Kind kind;
    Nolt::IpAddr address = {}; ///< of `ipv4`, not zero; else zero
};

VtepText readVtepText(text::JsonText const & text);

} // namespace vxshow::sources::frr
