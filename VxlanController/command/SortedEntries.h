#pragma once

#include "VxlanController/command/InterruptPoll.h"

#include <algorithm>
#include <functional>
#include <vector>

namespace VxlanController::Cli {

/// The entries of a published table for which `taken(entry)` holds, by pointer, in ascending
/// order of `key`, a getter of theirs. They are valid until the table is next written.
///
/// What is copied to an ordered collection is sorted like this first: the collection then
/// grows at its end, and its nodes lie in memory in the order in which they are printed and
/// freed. In the hash order of the state, a table of a million entries takes more than twice
/// as long.
template <class Table, class Key, class Taken>
auto sortedEntries(Table const & table, Key key, InterruptPoll & poll, Taken && taken) {
    using Entry = typename Table::Slot::Element;
    std::vector<Entry const *> entries;
    for (Entry const & entry : table) {
        poll.step();
        if (taken(entry)) {
            entries.push_back(&entry);
        }
    }
    std::sort(entries.begin(), entries.end(), [&](Entry const * a, Entry const * b) {
        poll.step();
        return std::invoke(key, *a) < std::invoke(key, *b);
    });
    return entries;
}

} // namespace VxlanController::Cli
