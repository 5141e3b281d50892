#pragma once

#include "vxshow/mount/HardwareVtepJoin.h"
#include "vxshow/mount/Json.h"

namespace vxshow {

/// A select that the server has refused. The text is its own words, printable, on one line.
struct SelectRefused {
    std::string words;
};

/// Reads the answer to one select, `{"rows":[ROW,…]}`, into `join`. Throws `Refusal`,
/// `MalformedJson` and `SelectRefused`.
void readSelect(JsonValue & value, HardwareVtepTable table, HardwareVtepJoin & join);

} // namespace vxshow
