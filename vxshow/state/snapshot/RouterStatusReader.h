#pragma once

#include "Vex/Dir.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Reads `{ ROUTER: { "ports": ..., "uplinks": ..., "routes": ... } }`, each of which may be
/// missing, into a `VxlanController::LRStatusV2` for each router. Throws `Refusal`.
Vex::Ptr<Vex::Dir> readRouterStatus(text::JsonValue & value);

} // namespace vxshow::state::snapshot
