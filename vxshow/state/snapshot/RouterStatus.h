#pragma once

#include "Vex/Dir.h"
#include "state/LRStatusV2.h"
#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Reads `{ ROUTER: { "ports": …, "uplinks": …, "routes": … } }`, each of which can be missing,
/// into a `VxlanController::LRStatusV2` for each router. Throws `Refusal`.
Vex::Ptr<Vex::Dir> readRouterStatus(text::JsonValue & value);

/// Writes such an object as the member `key`; empty parts of a router are left out.
void writeRouterStatus(ValuesWriter & values, std::string_view key, Vex::Dir const & routers);

} // namespace vxshow::state::snapshot
