#pragma once

#include <string>

namespace vxshow::terminal {

/// Now, in the local time zone: 02:30:00.
std::string timeOfDay();

} // namespace vxshow::terminal
