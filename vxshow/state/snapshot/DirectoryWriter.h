#pragma once

#include "Vex/Dir.h"
#include "vxshow/state/snapshot/SortedByKey.h"
#include "vxshow/state/snapshot/ValuesWriter.h"

#include <vector>

namespace vxshow::state::snapshot {

/// The member `key`, an object with a member for each entity of a directory, by name, which
/// `write(entity)` fills. What is no `Entity` is nothing to the commands either.
template <class Entity, class Write>
void writeDirectory(ValuesWriter & values, std::string_view key, Vex::Dir const & directory,
                    Write && write) {
    struct Named {
        Vex::Name name;
        Vex::Ptr<Entity const> entity;
    };

    std::vector<Named> entities;
    entities.reserve(directory.size());
    for (auto at = directory.entityPtrIteratorConst(); at; ++at) {
        if (auto entity = Vex::dynamicPtr<Entity const>(at.entity())) {
            entities.push_back({at.name(), std::move(entity)});
        }
    }
    values.object(key, [&] {
        forEachByKey(entities, &Named::name, [&](Named const & named) {
            values.object(writable(named.name), [&] { write(*named.entity); });
        });
    });
}

} // namespace vxshow::state::snapshot
