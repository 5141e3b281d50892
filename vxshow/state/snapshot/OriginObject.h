#pragma once

#include "vxshow/state/Origin.h"
#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Reads the member "origin". Throws `Refusal`.
Origin readOrigin(text::JsonValue & value);

/// Writes the members of `origin` into the open object. Throws `Unwritable`.
void writeOrigin(ValuesWriter & values, Origin const & origin);

} // namespace vxshow::state::snapshot
