#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Prints what `vcsLR` has collected: a table of the IP ports and one of the uplink ports.
void renderLRText(outfmt::Printer & printer, VcsLR const * vcsLR);

} // namespace VxlanController::Cli
