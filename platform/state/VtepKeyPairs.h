#pragma once

#include "Nolt/IpGenAddr.h"
#include "Vex/KeyedHash.h"
#include "Vex/String.h"

#include <compare>
#include <functional>

/// The keys under which switches and VTEPs name each other.
///
/// A switch can have several VTEPs, identified there by the name of the VXLAN interface,
/// and several switches can share one address (an anycast VTEP). So neither an address nor
/// a switch alone is a key: the interface is part of it.
namespace [[gnu::visibility("default")]] VxlanController {

/// One VTEP of a switch.
struct IpVtepKeyPair {
    Nolt::IpGenAddr ip;
    Vex::String vtepName; ///< the VXLAN interface; empty if the source does not report it

    auto operator<=>(IpVtepKeyPair const & other) const = default;
};

/// One switch of a VTEP.
struct SwitchIdVtepKeyPair {
    Vex::String switchId;
    Vex::String vtepName; ///< the VXLAN interface; empty if the source does not report it

    auto operator<=>(SwitchIdVtepKeyPair const & other) const = default;
};

} // namespace VxlanController

template <>
struct std::hash<VxlanController::IpVtepKeyPair> {
    std::size_t operator()(VxlanController::IpVtepKeyPair const & key) const noexcept {
        return Vex::keyedHash(key.ip.low(), key.ip.highAndFamily(), Vex::textNumber(key.vtepName));
    }
};

template <>
struct std::hash<VxlanController::SwitchIdVtepKeyPair> {
    std::size_t operator()(VxlanController::SwitchIdVtepKeyPair const & key) const noexcept {
        return Vex::keyedHash(Vex::textNumber(key.switchId), Vex::textNumber(key.vtepName));
    }
};
