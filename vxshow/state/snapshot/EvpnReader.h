#pragma once

#include "Vex/Ptr.h"
#include "VxlanController/VxlanControllerCliModel.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Reads `{ "hosts": { VNI: { MAC: BINDING } }, "flood": { VNI: [ IPv4, … ] } }` into shared
/// tables, as the EVPN service publishes them. A member that is missing is a table that is
/// missing. Throws `Refusal`, and `Pelo::TableError` when there is no room for a table.
Vex::Ptr<VxlanController::Cli::HostFloodTable> readEvpn(text::JsonValue & value);

} // namespace vxshow::state::snapshot
