#pragma once

#include "vxshow/state/Details.h"
#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Reads the member "details". Throws `Refusal`.
Details readDetails(text::JsonValue & value);

/// Writes the members of `details` into the open object. Throws `Unwritable`.
void writeDetails(ValuesWriter & values, Details const & details);

} // namespace vxshow::state::snapshot
