#pragma once

#include "Vex/AllocTrack.h"
#include "Vex/Entity.h"
#include "Vex/FlatHashMap.h"
#include "Vex/Slot.h"
#include "Vex/String.h"
#include "state/LRIpPortV2.h"
#include "state/LRIpUplinkPortV2.h"
#include "state/LRRouteV2.h"

#include <utility>

namespace [[gnu::visibility("default")]] VxlanController {

/// What the controller publishes of one logical router: its ports, its uplink ports and its
/// routes, of which there may be millions.
class LRStatusV2 : public Vex::Tracked<LRStatusV2, Vex::Entity> {
public:
    static constexpr char const * vexTypeName = "VxlanController::LRStatusV2";
    using Routes =
        Vex::FlatHashMap<Vex::ValueSlot<Nolt::IpGenPrefix, LRRouteV2, &LRRouteV2::prefix>>;
    using IpPorts =
        Vex::FlatHashMap<Vex::ValueSlot<Nolt::IpGenAddrWithMask, LRIpPortV2, &LRIpPortV2::ip>>;
    using IpUplinkPorts = Vex::FlatHashMap<
        Vex::ValueSlot<Nolt::IpGenAddrWithMask, LRIpUplinkPortV2, &LRIpUplinkPortV2::ip>>;

    explicit LRStatusV2(Vex::String name) : name_(std::move(name)) {}

    /// The name of the logical router.
    Vex::String const & name() const noexcept { return name_; }

    /// The tables, each iterated in its own order.
    Routes const & route() const noexcept { return route_; }

    IpPorts const & ipPort() const noexcept { return ipPort_; }

    IpUplinkPorts const & ipUplinkPort() const noexcept { return ipUplinkPort_; }

    /// The writers: each inserts the entry or overwrites the one with its key, and
    /// returns whether it is new.
    bool routeIs(LRRouteV2 route);
    bool ipPortIs(LRIpPortV2 const & port);
    bool ipUplinkPortIs(LRIpUplinkPortV2 port);

private:
    Vex::String name_;
    Routes route_;
    IpPorts ipPort_;
    IpUplinkPorts ipUplinkPort_;
};

} // namespace VxlanController
