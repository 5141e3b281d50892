#pragma once

#include "vxshow/state/Mount.h"
#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Reads `{ "switches": …, "vteps": …, "published": …, "status": … }`. A missing member is absent
/// state. Switches and VTEPs describe each other and are one state, which is present if either of
/// them is. Throws `Refusal`.
Mount::Routers readRouters(text::JsonValue & value);

/// Writes what is known about logical routers as members of the open object. What a system
/// publishes at the empty path is left out. Throws `Unwritable` as `writeSwitches` and `writeVteps`
/// do.
void writeRouters(ValuesWriter & values, Mount::Routers const & routers);

} // namespace vxshow::state::snapshot
