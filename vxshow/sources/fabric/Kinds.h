#pragma once

#include "vxshow/sources/Kind.h"

#include <span>

namespace vxshow::sources::fabric {

/// Every kind of source, in the order in which messages name them.
std::span<Kind const> kinds();

} // namespace vxshow::sources::fabric
