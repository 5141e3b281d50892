#pragma once

#include "vxshow/state/Mount.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Reads `{ "switches": ..., "vteps": ..., "published": ..., "status": ... }`, each of which
/// may be missing: a state that is absent then. Switches and VTEPs describe each other and
/// are one state, which is there when either of them is. Throws `Refusal`.
Mount::Routers readRouters(text::JsonValue & value);

} // namespace vxshow::state::snapshot
