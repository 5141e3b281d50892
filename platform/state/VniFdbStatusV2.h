#pragma once

#include "Vex/AllocTrack.h"
#include "state/VniTables.h"

namespace [[gnu::visibility("default")]] VxlanController {

/// What the controller advertises to its destinations about one VNI. The name under which
/// it is published identifies the VNI.
class VniFdbStatusV2 : public Vex::Tracked<VniFdbStatusV2, VniTables> {
public:
    static constexpr char const * vexTypeName = "VxlanController::VniFdbStatusV2";

    VniFdbStatusV2() = default;
};

} // namespace VxlanController
