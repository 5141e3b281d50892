#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Renders the advertised tables as one document, {"vniInDottedNotation": BOOL, "vnis":
/// [VNI]}, each VNI as in the received document. A null list counts as empty. Raises what
/// the printer raises.
void renderFdbJson(outfmt::Printer & printer, bool dotted,
                   Vex::Ptr<VniStatusList const> const & vnis, Vex::U32 revision);

} // namespace VxlanController::Cli
