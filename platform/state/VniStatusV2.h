#pragma once

#include "Vex/AllocTrack.h"
#include "state/VniTables.h"

namespace [[gnu::visibility("default")]] VxlanController {

/// What one source has told the controller about one VNI.
class VniStatusV2 : public Vex::Tracked<VniStatusV2, VniTables> {
public:
    static constexpr char const * vexTypeName = "VxlanController::VniStatusV2";

    explicit VniStatusV2(Vxlan::Vni vni) noexcept : Tracked(vni) {}
};

} // namespace VxlanController
