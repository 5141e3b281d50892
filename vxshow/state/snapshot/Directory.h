#pragma once

#include "Vex/Dir.h"
#include "vxshow/state/snapshot/SortedByKey.h"
#include "vxshow/state/snapshot/ValuesWriter.h"
#include "vxshow/text/JsonAddresses.h"

#include <string_view>
#include <vector>

namespace vxshow::state::snapshot {

/// Reads an object into a directory: each member becomes the entity that
/// `readEntity(Vex::Name const &, JsonValue &)` returns, under the member's name. Throws
/// `Refusal`, in which `expected` describes the object.
template <class ReadEntity>
Vex::Ptr<Vex::Dir> readDirectory(text::JsonValue & value, std::string_view expected,
                                 ReadEntity && readEntity) {
    auto dir = Vex::makePtr<Vex::Dir>();
    value.members(expected, [&](text::JsonText const & key, text::JsonValue & member) {
        Vex::Name const name(key.text());
        text::onlyNew(dir->entryState(name) == nullptr, key);
        dir->entityIs(name, readEntity(name, member));
    });
    return dir;
}

/// Writes the member `key`: an object with a member for each entity of a directory, in order of
/// name, which `write(entity)` fills. Entities of other types are left out: no command shows them.
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
