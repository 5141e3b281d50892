#pragma once

#include "Bridging/VlanIdOrNone.h"
#include "Vex/KeyedHash.h"
#include "Vex/String.h"

#include <compare>
#include <functional>

namespace [[gnu::visibility("default")]] VxlanController {

/// A port of a switch and a VLAN on it. A port with several VLANs has a pair for each.
struct PortVlanPairV2 {
    Vex::String port;
    Bridging::VlanIdOrNone vlan;

    auto operator<=>(PortVlanPairV2 const & other) const = default;
};

} // namespace VxlanController

template <>
struct std::hash<VxlanController::PortVlanPairV2> {
    std::size_t operator()(VxlanController::PortVlanPairV2 const & pair) const noexcept {
        return Vex::keyedHash(Vex::textNumber(pair.port), pair.vlan.value());
    }
};
