#pragma once

#include "VxlanController/command/EntityPtr.h"
#include "VxlanController/command/InterruptPoll.h"

#include <utility>

namespace VxlanController::Cli {

/// Calls `visit(name, entity)` for each entity of `directory` that is a T, in no particular
/// order. A null directory has none.
template <class T, class Visit>
void forEachEntity(Vex::Ptr<Vex::Dir const> const & directory, Visit && visit) {
    if (!directory) {
        return;
    }
    InterruptPoll poll;
    for (auto it = directory->entityPtrIteratorConst(); it; ++it) {
        poll.step();
        if (auto const entity = entityPtr<T>(*directory, it.name())) {
            visit(it.name(), *entity);
        }
    }
}

} // namespace VxlanController::Cli
