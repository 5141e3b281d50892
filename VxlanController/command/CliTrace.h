#pragma once

#include "Trace/Handle.h"

namespace VxlanController::Cli {

/// The levels at which the commands write trace records.
inline constexpr unsigned traceMissingState = 1;
inline constexpr unsigned traceFunctionEntry = 8;

/// The commands' trace handle, "VxlanControllerCli". It exists from the time that the library
/// is loaded.
Trace::Handle & cliTrace();

} // namespace VxlanController::Cli
