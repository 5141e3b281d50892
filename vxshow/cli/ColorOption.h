#pragma once

#include "vxshow/terminal/Color.h"

#include <CLI/App.hpp>

#include <string_view>

namespace vxshow::cli {

/// Adds `--color`, which fills in `choice`.
void addColorOption(CLI::App & app, terminal::ColorChoice & choice);

/// The choice of a configuration file, one of `config::colorWords`. NO_COLOR counts for more:
/// "always" is then `automatic`, which heeds it.
terminal::ColorChoice configuredColor(std::string_view word);

} // namespace vxshow::cli
