#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Reads `{ "hosts": …, "flood": … }`, the shared tables of the EVPN service. A table that is
/// missing is absent. Throws `Refusal`, and `Pelo::TableError` if there is no room for a table.
Vex::Ptr<VxlanController::Cli::HostFloodTable> readEvpn(text::JsonValue & value);

/// Writes the shared tables of the EVPN service as members of the open object. A table that is
/// absent is left out.
///
/// The tables are keyed by VNI and address, so a VNI without an entry is not in them. A snapshot
/// does not record which type of tunnel floods to a VTEP, and no command shows it. Raises
/// `Pelo::CorruptionDetectedException` for a damaged table: half of one would be read back as a
/// whole one.
void writeEvpn(ValuesWriter & values, VxlanController::Cli::HostFloodTable const & tables);

} // namespace vxshow::state::snapshot
