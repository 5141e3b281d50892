#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Prints the advertised tables: the unicast section with one row per MAC, then the flood
/// section with one entry per MAC, its VTEPs three per line. Each section has title, header and
/// total, even for a null or empty list. Raises what the printer raises.
void printFdbText(outfmt::Printer & printer, bool dotted,
                  Vex::Ptr<VniStatusList const> const & vnis);

} // namespace VxlanController::Cli
