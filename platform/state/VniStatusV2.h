#pragma once

#include "Vex/AllocTrack.h"
#include "Vxlan/Vni.h"
#include "state/VniTables.h"

namespace [[gnu::visibility("default")]] VxlanController {

/// What one source has reported to the controller about one VNI.
class VniStatusV2 : public Vex::Tracked<VniStatusV2, VniTables> {
public:
    static constexpr char const * vexTypeName = "VxlanController::VniStatusV2";

    explicit VniStatusV2(Vxlan::Vni vni) noexcept : vni_(vni) {}

    Vxlan::Vni vni() const noexcept { return vni_; }

private:
    Vxlan::Vni vni_;
};

} // namespace VxlanController
