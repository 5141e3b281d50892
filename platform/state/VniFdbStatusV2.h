#pragma once

#include "Vex/AllocTrack.h"
#include "state/VniTables.h"

namespace [[gnu::visibility("default")]] VxlanController {

/// What the controller tells its destinations about one VNI, which the name tells under
/// which it is published.
class VniFdbStatusV2 : public Vex::Tracked<VniFdbStatusV2, VniTables> {
public:
    static constexpr char const * vexTypeName = "VxlanController::VniFdbStatusV2";

    VniFdbStatusV2() = default;
};

} // namespace VxlanController
