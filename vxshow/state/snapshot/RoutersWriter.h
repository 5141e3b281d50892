#pragma once

#include "vxshow/state/Mount.h"
#include "vxshow/state/snapshot/ValuesWriter.h"

namespace vxshow::state::snapshot {

/// Writes what is known of logical routers as members of the open object, as `readRouters`
/// reads it.
///
/// A snapshot does not tell the VXLAN interface that is the other half of the keys by which
/// switches and VTEPs name each other, and the order in which a switch's VTEPs are looked at
/// depends on it. Throws `Unwritable` where one is named, or a VTEP is not in the directory.
///
/// What a system publishes at the empty path is left out: the printer has no text without a
/// key, and no router is at that path.
void writeRouters(ValuesWriter & values, Mount::Routers const & routers);

} // namespace vxshow::state::snapshot
