#pragma once

#include "vxshow/mount/Json.h"
#include "vxshow/mount/Mount.h"

namespace vxshow {

/// Reads a whole snapshot document, version 1. Throws `Refusal`, `MalformedJson`, and
/// `Pelo::TableError` when there is no room for a table.
Mount readDocument(JsonReader & json);

} // namespace vxshow
