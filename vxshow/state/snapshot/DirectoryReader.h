#pragma once

#include "Vex/Dir.h"
#include "vxshow/text/JsonAddresses.h"

#include <string_view>

namespace vxshow::state::snapshot {

/// Reads an object into a directory: for each member the entity that
/// `readEntity(Vex::Name const &, JsonValue &)` makes of it, under the member's name. Throws
/// `Refusal`, in whose words `expected` is about the object.
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

} // namespace vxshow::state::snapshot
