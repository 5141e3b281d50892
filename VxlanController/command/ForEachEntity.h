#pragma once

#include "VxlanController/command/EntityPtr.h"
#include "VxlanController/command/FixedOrder.h"
#include "VxlanController/command/InterruptPoll.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace VxlanController::Cli {

/// Calls `visit(name)` for the name of each entity of `directory`, in fixed order: of several
/// entities that contradict each other, the same one is always the last.
template <class Visit>
void forEachName(Vex::Dir const & directory, Visit && visit) {
    struct Numbered {
        Vex::U64 number;
        Vex::Name const * name;
    };

    InterruptPoll poll;
    std::vector<Numbered> names;
    names.reserve(directory.size());
    for (auto it = directory.entityPtrIteratorConst(); it; ++it) {
        poll.step();
        names.push_back({fixedNumber(it.name()), &it.name()});
    }
    std::sort(names.begin(), names.end(), [&](Numbered const & a, Numbered const & b) {
        poll.step();
        return a.number != b.number ? a.number < b.number : *a.name < *b.name;
    });
    for (Numbered const & numbered : names) {
        poll.step();
        visit(*numbered.name);
    }
}

/// Calls `visit(name, entity)` for each entity of `directory` that is a T, in the order of
/// `forEachName`. A null directory has none.
template <class T, class Visit>
void forEachEntity(Vex::Ptr<Vex::Dir const> const & directory, Visit && visit) {
    if (!directory) {
        return;
    }
    forEachName(*directory, [&](Vex::Name const & name) {
        if (auto const entity = entityPtr<T>(*directory, name)) {
            visit(name, *entity);
        }
    });
}

} // namespace VxlanController::Cli
