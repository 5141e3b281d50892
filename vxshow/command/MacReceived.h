#pragma once

#include "vxshow/CommandLine.h"

#include <CLI/App.hpp>

namespace vxshow {

/// Adds `received` to the command `mac`. When it is the one that was typed, it fills the
/// command and the render step of `chosen`, which must outlive the parsing.
void addMacReceived(CLI::App & mac, CommandLine & chosen);

} // namespace vxshow
