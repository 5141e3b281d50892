#pragma once

#include "Vex/Types.h"

#include <optional>
#include <string_view>

namespace vxshow::sources::frr {

/// The seconds that zebra writes as "01:02:03", "6d23h59m" or "02w3d04h": the longer ago, the
/// coarser. Nullopt if the text is anything else.
std::optional<Vex::U32> readUptime(std::string_view text);

} // namespace vxshow::sources::frr
