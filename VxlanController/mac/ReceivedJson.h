#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Renders the received tables as one document, {"switches": {NAME: SOURCE},
/// "nonSwitchSources": {NAME: SOURCE}}, where a SOURCE has "vniInDottedNotation" and the
/// list "vnis". A null directory is an empty dictionary. The dotted flag is only reported: a
/// VNI is always a number. Raises what the printer raises.
void renderJson(outfmt::Printer & printer, bool dotted, Vex::Ptr<SwitchDir const> const & switches,
                Vex::Ptr<SwitchDir const> const & nonSwitchSources, Vex::U32 revision);

} // namespace VxlanController::Cli
