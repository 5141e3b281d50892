#pragma once

#include "VxlanController/VxlanControllerCliModel.h"

namespace VxlanController::Cli {

/// The change count as both forms of output show it: 32 bits with a sign.
inline int signedChanges(VxlanArpEntry const & entry) noexcept {
    return static_cast<int>(entry.changes());
}

} // namespace VxlanController::Cli
