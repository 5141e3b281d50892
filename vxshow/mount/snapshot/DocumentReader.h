#pragma once

#include "vxshow/mount/Mount.h"
#include "vxshow/mount/Selection.h"
#include "vxshow/mount/json/Json.h"

namespace vxshow {

/// Reads a whole snapshot document, version 1, and mounts what is selected. Throws `Refusal`,
/// `MalformedJson`, and `Pelo::TableError` when there is no room for a table.
Mount readDocument(JsonReader & json, Selection const & selection);

} // namespace vxshow
