#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Prints the received tables: the unicast section, then the flood section, each with title,
/// header, one row per binding, and a total over both directories. A null directory has no
/// rows. Raises what the printer raises.
void printText(outfmt::Printer & printer, bool dotted, Vex::Ptr<SwitchDir const> const & switches,
               Vex::Ptr<SwitchDir const> const & nonSwitchSources);

} // namespace VxlanController::Cli
