#pragma once

#include <string>

namespace vxshow::system {

/// The time of day now, in the local time zone, such as "02:30:00"; "?" if it is not known.
std::string timeOfDay();

} // namespace vxshow::system
