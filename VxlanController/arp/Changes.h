#pragma once

#include "VxlanController/VxlanControllerCliModel.h"

namespace VxlanController::Cli {

/// The change count as text and JSON show it: a signed 32-bit number.
inline int signedChanges(VxlanArpEntry const & entry) noexcept {
    return static_cast<int>(entry.changes());
}

} // namespace VxlanController::Cli
