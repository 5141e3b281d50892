#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/SwitchInfoDir.h"

namespace VxlanController::Cli {

/// Adds one switch and its VTEP to the switch map of `lrMapBase`. The VTEP is the first active
/// one of the switch; a switch without one is left out. Neither pointer is null.
void setSwitchMap(Vex::Ptr<LRMapBase> const & lrMapBase,
                  Vex::Ptr<VxlanController::SwitchInfo const> const & switchInfo);

} // namespace VxlanController::Cli
