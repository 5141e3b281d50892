#include "Vex/Dir.h"

namespace [[gnu::visibility("default")]] Vex {

Ptr<Entity const> Dir::entityPtr(Name const & name) const {
    Entry const * entry = entries_.find(name);
    return entry ? entry->entity() : nullptr;
}

void Dir::entityIs(Name const & name, Ptr<Entity const> entity) {
    if (entity) {
        entries_.upsert(Entry(name, std::move(entity), nullptr));
    } else {
        entries_.remove(name);
    }
}

Ptr<Dir> Dir::dirIs(Name const & name) {
    Entry const * entry = entries_.find(name);
    if (entry && entry->dir()) {
        return entry->dir();
    }
    Ptr<Dir> dir = makePtr<Dir>();
    entries_.upsert(Entry(name, nullptr, dir));
    return dir;
}

} // namespace Vex
