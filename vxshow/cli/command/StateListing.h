#pragma once

#include "outfmt/Printer.h"
#include "vxshow/state/Mount.h"

/// What `vxshow state` shows: where the state comes from, and how much it holds.
namespace vxshow::cli::command {

/// As text: tables whose columns are as wide as their cells, in printable ASCII.
void printState(outfmt::Printer & printer, state::Mount const & mount);

/// As a JSON document: "origin" as snapshots have it, if it is known, and "counts".
void renderStateJson(outfmt::Printer & printer, state::Mount const & mount);

} // namespace vxshow::cli::command
