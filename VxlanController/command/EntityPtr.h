#pragma once

#include "Vex/Dir.h"
#include "Vex/Ptr.h"

namespace VxlanController::Cli {

/// The entity under `name` as a T; null if there is none or it is not a T.
template <class T>
Vex::Ptr<T const> entityPtr(Vex::Dir const & directory, Vex::Name const & name) {
    return Vex::dynamicPtr<T const>(directory.entityPtr(name));
}

} // namespace VxlanController::Cli
