#pragma once

#include "Nolt/IpGenAddr.h"
#include "Nolt/IpGenPrefix.h"
#include "Vex/FlatHashMap.h"
#include "Vex/Slot.h"

namespace [[gnu::visibility("default")]] VxlanController {

/// One route of a logical router: a prefix and the equal-cost nexthops towards it. A route
/// without nexthops drops what it matches.
class LRRouteV2 {
public:
    /// Flat, since of a million routes nearly every one has a handful of nexthops at
    /// most.
    using Nexthops = Vex::FlatHashMap<Vex::SetSlot<Nolt::IpGenAddr>>;

    LRRouteV2() = default;

    explicit LRRouteV2(Nolt::IpGenPrefix const & prefix) noexcept : prefix_(prefix) {}

    Nolt::IpGenPrefix const & prefix() const noexcept { return prefix_; }

    /// The nexthops, in no particular order.
    Nexthops const & nexthop() const noexcept { return nexthop_; }

    /// Adds a nexthop; true if it is new.
    bool nexthopIs(Nolt::IpGenAddr const & address) & {
        return nexthop_.upsert(Vex::SetSlot<Nolt::IpGenAddr>(address, true));
    }

private:
    Nolt::IpGenPrefix prefix_;
    Nexthops nexthop_;
};

} // namespace VxlanController
