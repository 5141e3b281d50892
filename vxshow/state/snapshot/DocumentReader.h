#pragma once

#include "vxshow/state/Mount.h"
#include "vxshow/state/Selection.h"
#include "vxshow/text/Json.h"

namespace vxshow::state::snapshot {

/// Reads a whole snapshot document, version 1, and mounts what is selected. Throws `Refusal`,
/// `MalformedJson`, and `Pelo::TableError` when there is no room for a table.
Mount readDocument(text::JsonReader & json, Selection const & selection);

} // namespace vxshow::state::snapshot
