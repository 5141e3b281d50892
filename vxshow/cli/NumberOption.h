#pragma once

#include "Vex/Types.h"

#include <CLI/App.hpp>

#include <functional>
#include <string>

namespace vxshow::cli {

/// Adds an option whose whole value must be a decimal number from `low` to `high`. `store` is
/// called with the number. `meaning` is added to what a refusal says is expected.
void addNumber(CLI::App & app, std::string const & name, Vex::U32 low, Vex::U32 high,
               std::string const & help, std::function<void(Vex::U32)> const & store,
               std::string const & meaning = {});

} // namespace vxshow::cli
