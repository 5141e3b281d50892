#pragma once

#include "state/LRStatusV2.h"
#include "vxshow/state/snapshot/ValuesWriter.h"

namespace vxshow::state::snapshot {

/// Writes the ports, uplink ports and routes of one logical router as members of the open
/// object, as `readRouterStatus` reads them; of these, what is empty not at all.
void writeRouterStatus(ValuesWriter & values, VxlanController::LRStatusV2 const & status);

} // namespace vxshow::state::snapshot
