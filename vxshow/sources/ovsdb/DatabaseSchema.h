#pragma once

#include "vxshow/system/FileBytes.h"

#include <optional>
#include <string>

namespace vxshow::sources::ovsdb {

/// Which of the tables and columns that not every version of the `hardware_vtep` schema has are
/// there. By default all of them.
struct DatabaseSchema {
    bool locatorKey = true; ///< `Physical_Locator.tunnel_key`
    bool logicalRouter = true;
    bool arpSourcesLocal = true;
    bool arpSourcesRemote = true;
    std::string version = {}; ///< printable; empty: not known

    bool isWhole() const noexcept {
        return locatorKey && logicalRouter && arpSourcesLocal && arpSourcesRemote;
    }

    /// What cannot be shown for the lack of it, in one line; nullopt if there is nothing.
    std::optional<std::string> remark() const;
};

/// Reads a schema as `ovsdb-client get-schema` prints it (RFC 7047, 3.2). Raises `AnswerError`.
DatabaseSchema readSchema(system::FileBytes const & printed);

} // namespace vxshow::sources::ovsdb
