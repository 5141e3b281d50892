#pragma once

#include "vxshow/terminal/Exit.h"

#include <string_view>

/// What the program has to tell its user beside the listing. Texts are printable ASCII.
namespace vxshow::terminal {

/// Writes each line of `text` to standard error, with the program's name before it.
void say(std::string_view text);

/// Says why, and ends the process.
[[noreturn]] void fail(ExitStatus status, std::string_view text);

} // namespace vxshow::terminal
