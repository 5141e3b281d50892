#pragma once

#include "Nolt/EthAddr.h"
#include "Nolt/IpGenPrefix.h"
#include "VxlanController/command/InterruptPoll.h"
#include "VxlanController/command/SortByNumbers.h"

#include <array>
#include <cstddef>
#include <functional>
#include <type_traits>
#include <vector>

namespace VxlanController::Cli {

/// The numbers by which a key is ordered, most significant first.
inline std::array<Vex::U64, 1> orderOf(Nolt::EthAddr const & key) {
    return {key.value()};
}

inline std::array<Vex::U64, 3> orderOf(Nolt::IpGenAddr const & key) {
    return {static_cast<Vex::U64>(key.family()), key.high(), key.low()};
}

inline std::array<Vex::U64, 4> orderOf(Nolt::IpGenAddrWithMask const & key) {
    auto const [family, high, low] = orderOf(key.address());
    return {family, high, low, key.length()};
}

inline std::array<Vex::U64, 4> orderOf(Nolt::IpGenPrefix const & key) {
    auto const [family, high, low] = orderOf(key.address());
    return {family, high, low, key.length()};
}

/// An entry of a published table with a copy of its key: sorting reads only the keys, since the
/// entries of a large table are scattered across memory.
template <class Key, class Entry>
struct KeyedEntry {
    Key key;
    Entry const * entry;
};

/// Calls `visit(entry)` for each entry of a published table for which `matches(entry)` holds, in
/// ascending order of `key`, one of their getters.
///
/// Entries are sorted before they are copied to an ordered collection: the collection then
/// grows at its end, and its entries lie in memory in the order in which they are printed. In
/// the hash order of the state, a table of a million entries takes more than twice as long.
template <class Table, class Key, class Matches, class Visit>
void forEachSorted(Table const & table, Key key, InterruptPoll & poll, Matches && matches,
                   Visit && visit) {
    using Entry = std::remove_cvref_t<decltype(*table.begin())>;
    using KeyValue = std::remove_cvref_t<std::invoke_result_t<Key, Entry const &>>;
    std::vector<KeyedEntry<KeyValue, Entry>> entries;
    entries.reserve(table.size());
    for (Entry const & entry : table) {
        poll.step();
        if (matches(entry)) {
            entries.push_back({std::invoke(key, entry), &entry});
        }
    }
    sortByNumbers(
        entries, [](auto const & keyed) { return orderOf(keyed.key); }, [&] { poll.step(); });
    for (std::size_t i = 0; i < entries.size(); ++i) {
        // The entries are scattered across memory, so each is fetched ahead of its use.
        constexpr std::size_t ahead = 8;
        if (i + ahead < entries.size()) {
            __builtin_prefetch(entries[i + ahead].entry);
        }
        poll.step();
        visit(*entries[i].entry);
    }
}

} // namespace VxlanController::Cli
