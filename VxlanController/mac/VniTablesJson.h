#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Renders "vniInDottedNotation" and the list "vnis" in the open dictionary, each VNI with
/// "macAddress", "vni", "unicastHostTable" and "bumVtepListTable". A source of the received
/// document and the whole advertised one look like this. A null list is an empty one.
/// Revision 1 alone carries "timeLearned" in a unicast entry, always 0.
void renderVniList(outfmt::Printer & printer, bool dotted,
                   Vex::Ptr<VniStatusList const> const & vnis, Vex::U32 revision);

} // namespace VxlanController::Cli
