#pragma once

#include <string>

namespace vxshow {

/// Now, in the local time zone: 02:30:00.
std::string timeOfDay();

} // namespace vxshow
