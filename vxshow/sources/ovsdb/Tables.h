#pragma once

#include "vxshow/sources/ovsdb/Join.h"
#include "vxshow/text/Json.h"

namespace vxshow::sources::ovsdb {

/// A select that the server has refused.
struct SelectRefused {
    std::string words; ///< those of the server, printable, on one line
    bool schema;       ///< whether the server does not know the table or a column
};

/// Reads the answer to one select, `{"rows":[ROW,…]}`, into `join`. Throws `Refusal`,
/// `MalformedJson` and `SelectRefused`.
void readSelect(text::JsonValue & value, Table table, Join & join);

} // namespace vxshow::sources::ovsdb
