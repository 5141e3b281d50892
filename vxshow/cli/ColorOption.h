#pragma once

#include "vxshow/terminal/Color.h"

#include <CLI/App.hpp>

namespace vxshow::cli {

/// Adds `--color`, which fills in `choice`.
void addColorOption(CLI::App & app, terminal::ColorChoice & choice);

} // namespace vxshow::cli
