#include "Vex/FlatHashMap.h"
#include "Vex/Hash.h"
#include "Vex/HashMap.h"
#include "fuzz/Targets.h"
#include "fuzz/platform/MapTwin.h"

#include <compare>
#include <unordered_map>
#include <vector>

namespace fuzz {

namespace {

/// Four keys have the same hash, so that chains and probes of equal hashes are met.
struct HashedKey {
    static constexpr std::size_t padding = 0;
    static constexpr unsigned fillFactor = 1;

    std::uint8_t number;

    explicit HashedKey(std::uint8_t n) noexcept : number(n) {}

    HashedKey beside(unsigned which) const noexcept {
        return HashedKey(static_cast<std::uint8_t>(number + which - 1));
    }

    HashedKey plus(unsigned count) const noexcept {
        return HashedKey(static_cast<std::uint8_t>(number + count));
    }

    Vex::U64 hash() const noexcept { return Vex::hashMix(number / 4U); }

    auto operator<=>(HashedKey const &) const = default;
};

/// Walks go by hash, then by key.
struct HashOrder {
    bool operator()(HashedKey a, HashedKey b) const noexcept {
        return a.hash() != b.hash() ? a.hash() < b.hash() : a < b;
    }
};

} // namespace

} // namespace fuzz

template <>
struct std::hash<fuzz::HashedKey> {
    std::size_t operator()(fuzz::HashedKey key) const noexcept { return key.hash(); }
};

/// The hashed collection agrees with std::map, and its iterators keep their place; the flat hash
/// table agrees with std::unordered_map.
namespace fuzz {

namespace {

using HashMap = Vex::HashMap2018<MapEntrySlot<HashedKey>>;
using Flat = Vex::FlatHashMap<MapEntrySlot<HashedKey>>;
using Numbers = std::unordered_map<std::uint8_t, unsigned>;

Flat::Slot flatSlot(std::uint8_t key, unsigned number) {
    return Flat::Slot(MapEntry<HashedKey>(HashedKey(key), number));
}

void upsert(Flat & map, Numbers & expected, std::uint8_t key, unsigned number) {
    bool const inserted = map.upsert(flatSlot(key, number));
    check(inserted == !expected.contains(key), "upsert does not say whether it inserts");
    expected[key] = number;
}

/// Replaces everything by a vector, in which a key can repeat.
void fillFlat(Flat & map, Numbers & expected, Input & input) {
    std::vector<Flat::Slot> slots;
    std::optional<std::size_t> repeated;
    expected.clear();
    auto const count = input.below(96);
    auto const first = input.byte();
    auto const stride = input.byte() | 1U;
    for (unsigned i = 0; i < count; ++i) {
        auto const key = static_cast<std::uint8_t>(first + i * stride);
        slots.push_back(flatSlot(key, i));
        expected[key] = i;
    }
    if (count > 0 && input.flag()) {
        auto const again = input.below(count);
        slots.push_back(flatSlot(slots[again].key().number, count));
        repeated = count;
    }
    check(map.fill(slots) == repeated, "fill does not find the first key that repeats");
    check(slots.empty(), "fill leaves slots");
    if (repeated) {
        map.clear();
        expected.clear();
    }
}

void checkFlat(Flat const & map, Numbers const & expected) {
    check(map.size() == expected.size(), "the size is wrong");
    check(map.empty() == expected.empty(), "empty is wrong");
    std::size_t walked = 0;
    for (auto const & entry : map) {
        auto const known = expected.find(entry.key().number);
        check(known != expected.end() && known->second == entry.number(), "a walk differs");
        ++walked;
    }
    check(walked == expected.size(), "a walk has another length");
}

void flatMap(Input input) {
    Flat map;
    Numbers expected;
    for (unsigned step = 1; !input.empty(); ++step) {
        switch (input.below(8)) {
        case 0:
            map.clear();
            expected.clear();
            break;
        case 1:
            fillFlat(map, expected, input);
            break;
        case 2: {
            auto const key = input.byte();
            auto const * const found = map.find(HashedKey(key));
            auto const known = expected.find(key);
            check((found != nullptr) == (known != expected.end()), "find is wrong");
            check(!found || found->element().number() == known->second, "find differs");
            break;
        }
        case 3: {
            auto const from = input.byte();
            auto const count = input.below(64);
            for (unsigned i = 0; i < count; ++i) {
                upsert(map, expected, static_cast<std::uint8_t>(from + i), step);
            }
            break;
        }
        default:
            upsert(map, expected, input.byte(), step);
        }
    }
    checkFlat(map, expected);
}

} // namespace

void hashedMaps(std::string_view bytes) {
    Input input(bytes);
    if (input.flag()) {
        flatMap(input);
    } else {
        MapTwin<HashMap, HashOrder>(input.rest()).run();
    }
}

} // namespace fuzz
