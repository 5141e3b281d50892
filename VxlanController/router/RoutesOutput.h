#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Prints the routes that `vcsLRRoute` has collected, as text or JSON, depending on the
/// printer's mode.
void renderRoute(outfmt::Printer & printer, VcsLRRoute const * vcsLRRoute);

} // namespace VxlanController::Cli
