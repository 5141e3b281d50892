#pragma once

#include "outfmt/Interrupt.h"

#include <algorithm>
#include <functional>
#include <type_traits>
#include <vector>

namespace vxshow::state::snapshot {

/// Calls `visit(entry)` for each entry of a published table in ascending order of `key`, a getter
/// of the entries.
///
/// A table has an order of its own, but a document must depend on its content alone. Only the keys
/// and pointers to the entries are copied, since there can be millions. Each entry stays in the
/// table, which must not be changed meanwhile. Throws `outfmt::SigIntException`.
template <class Table, class Key, class Visit>
void forEachByKey(Table const & table, Key key, Visit && visit) {
    using Entry = std::remove_cvref_t<decltype(*table.begin())>;
    using KeyValue = std::remove_cvref_t<std::invoke_result_t<Key, Entry const &>>;

    struct Keyed {
        KeyValue key;
        Entry const * entry;
    };

    std::vector<Keyed> entries;
    entries.reserve(table.size());
    for (Entry const & entry : table) {
        entries.push_back({std::invoke(key, entry), &entry});
    }
    std::sort(entries.begin(), entries.end(), [](Keyed const & a, Keyed const & b) {
        outfmt::checkInterrupt();
        return a.key < b.key;
    });
    for (Keyed const & keyed : entries) {
        visit(*keyed.entry);
    }
}

} // namespace vxshow::state::snapshot
