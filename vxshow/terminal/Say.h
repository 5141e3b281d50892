#pragma once

#include "vxshow/terminal/Color.h"
#include "vxshow/terminal/Exit.h"

#include <string_view>

/// Messages to the user on standard error. Texts must be printable ASCII.
namespace vxshow::terminal {

/// Chooses whether messages have colour from now on; before, that is automatic.
void colorMessages(ColorChoice choice) noexcept;

/// Writes each line of `text` to standard error, prefixed with "vxshow: ", in the
/// colour of `kind`.
void say(std::string_view text, Kind kind = Kind::remark);

/// Says `text` and ends the process with `status`.
[[noreturn]] void fail(ExitStatus status, std::string_view text);

} // namespace vxshow::terminal
