#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Prints what `vcsLR` has collected as one document:
///
///     {"router": {ROUTER: {"ipPort": {IP/LEN: {"vni", "mac", "vtepIp"}},
///                          "uplinkPort": {IP/LEN: {"vlan", "mac", "switchId", "vtepIp",
///                                                  "ports": [PORT]}}}}}
void renderLRJson(outfmt::Printer & printer, VcsLR const * vcsLR);

} // namespace VxlanController::Cli
