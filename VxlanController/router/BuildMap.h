#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/SwitchInfoDir.h"

namespace VxlanController::Cli {

/// Adds one switch and its first active VTEP to the switch map of `lrMapBase`. A switch without
/// an active VTEP is left out. Neither pointer is ever null.
void setSwitchMap(Vex::Ptr<LRMapBase> const & lrMapBase,
                  Vex::Ptr<VxlanController::SwitchInfo const> const & switchInfo);

} // namespace VxlanController::Cli
