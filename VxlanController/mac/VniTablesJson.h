#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Renders the entry of one VNI in the open list: "macAddress", "vni", "unicastHostTable",
/// "bumVtepListTable". Received and advertised documents share it. Revision 1 alone
/// carries "timeLearned" in a unicast entry, always 0.
void renderVniStatus(outfmt::Printer & printer, VniStatus const & status, Vex::U32 revision);

} // namespace VxlanController::Cli
