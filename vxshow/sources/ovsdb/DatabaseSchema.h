#pragma once

#include "vxshow/sources/Findings.h"
#include "vxshow/system/FileBytes.h"

#include <string>
#include <vector>

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

    /// What cannot be shown for the lack of them.
    std::vector<Remark> remarks() const;
};

/// Reads a schema as `ovsdb-client get-schema` prints it (RFC 7047, 3.2). Raises `AnswerError`.
DatabaseSchema readSchema(system::FileBytes const & printed);

} // namespace vxshow::sources::ovsdb
