#pragma once

#include "vxshow/terminal/Exit.h"

#include <string_view>

/// Messages to the user on standard error. Texts must be printable ASCII.
namespace vxshow::terminal {

/// Writes each line of `text` to standard error, prefixed with "vxshow: ".
void say(std::string_view text);

/// Says `text` and ends the process with `status`.
[[noreturn]] void fail(ExitStatus status, std::string_view text);

} // namespace vxshow::terminal
