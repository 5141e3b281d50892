#pragma once

#include "vxshow/state/Counters.h"
#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Reads the member "uncounted". Throws `Refusal`.
KeptCounters readUncounted(text::JsonValue & value);

/// Writes the members of "uncounted", the counters that are not kept, into the open object. Throws
/// `Unwritable`.
void writeUncounted(ValuesWriter & values, KeptCounters const & counters);

} // namespace vxshow::state::snapshot
