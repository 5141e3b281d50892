#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "vxshow/state/snapshot/ValuesWriter.h"

namespace vxshow::state::snapshot {

/// Writes the shared tables of the EVPN service as members of the open object, as `readEvpn`
/// reads them. A table that is missing is left out.
///
/// The tables are keyed by VNI and address, so a VNI without an entry is none. By which tunnel
/// a VTEP is flooded to has no words in a snapshot, and no command shows it. Raises
/// `Pelo::CorruptionDetectedException` for a table that is damaged: half of one would be read
/// back as a whole.
void writeEvpn(ValuesWriter & values, VxlanController::Cli::HostFloodTable const & tables);

} // namespace vxshow::state::snapshot
