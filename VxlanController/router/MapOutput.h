#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Prints the map that `vcsLRMap` has built, as text or JSON, depending on the printer's mode.
void renderLRMap(outfmt::Printer & printer, VcsLRMap const * vcsLRMap);

} // namespace VxlanController::Cli
