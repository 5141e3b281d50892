#pragma once

#include "Vex/AllocTrack.h"
#include "Vex/Entity.h"
#include "Vex/OrderedMap.h"
#include "Vex/Slot.h"
#include "state/VniStatusV2.h"

namespace [[gnu::visibility("default")]] VxlanController {

/// Everything that one source has reported to the controller: its VNIs in ascending
/// order.
class VniStatusDirV2 : public Vex::Tracked<VniStatusDirV2, Vex::Entity> {
public:
    static constexpr char const * vexTypeName = "VxlanController::VniStatusDirV2";
    using VniStatuses =
        Vex::OrderedMap<Vex::EntitySlot<Vxlan::Vni, VniStatusV2, &VniStatusV2::vni>>;

    VniStatusDirV2() = default;

    /// The VNIs, iterated in ascending order.
    VniStatuses const & vniStatusV2() const noexcept { return vniStatusV2_; }

    /// The tables of one VNI, or null if the source has reported nothing about it.
    Vex::Ptr<VniStatusV2 const> vniStatusV2(Vxlan::Vni vni) const;

    /// The tables of one VNI for writing; created if they do not exist.
    Vex::Ptr<VniStatusV2> vniStatusV2Is(Vxlan::Vni vni);

private:
    VniStatuses vniStatusV2_;
};

} // namespace VxlanController
