#pragma once

#include "Pelo/Errors.h"
#include "Pelo/Slot.h"
#include "Pelo/WritableRegion.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace [[gnu::visibility("default")]] Pelo {

/// The only writer of a table, which it creates.
///
/// Readers see every change at once, until the table has no slot left for a new key. Then
/// the writer creates a bigger one and moves there: readers of the old one keep what it
/// held at that moment and can see that it was replaced, and the path of a file leads to
/// the new one. A change is made in place, guarded by the generation, so a writer that dies
/// in the middle leaves a table that readers refuse, never one that they misread.
template <Schema S>
class Writer {
public:
    using Key = typename S::Key;
    using Value = typename S::Value;

    /// Creates an empty table with room for `entries` entries before it moves. It has no
    /// name in any directory: readers attach to `descriptor()`, in this process or in one
    /// that inherits or receives it. Raises `TableError`.
    static Writer inMemory(std::string name, U64 entries = 0) {
        return Writer({Destination::Kind::memory, std::move(name)}, entries);
    }

    /// As `inMemory`, but in a file, which replaces any existing file at `path`.
    static Writer inFile(std::string path, U64 entries = 0) {
        return Writer({Destination::Kind::file, std::move(path)}, entries);
    }

    /// As `inMemory`, but in memory of this process alone, to which the limit on the size of files
    /// does not apply: readers in this process take `mapping()`, and there are no others.
    static Writer inOwnMemory(std::string name, U64 entries = 0) {
        return Writer({Destination::Kind::ownMemory, std::move(name)}, entries);
    }

    /// The table's name in messages.
    std::string const & name() const noexcept { return destination_.name; }

    /// The number of live entries.
    U64 size() const noexcept { return region_.counts().live; }

    /// The writer's descriptor of the table's memory; negative if that is this process's own.
    /// Changes when the table moves.
    int descriptor() const noexcept { return region_.descriptor(); }

    /// The table's memory. Changes when the table moves.
    std::shared_ptr<Mapping const> const & mapping() const noexcept { return region_.mapping(); }

    /// How often the table has moved.
    U64 moves() const noexcept { return moves_; }

    /// Stores `value` under `key`; returns whether the key is new. A default value is
    /// stored like any other: readers reach its key, and find nothing under it. Raises
    /// `TableError` if the table must move and cannot, and `CorruptionDetectedException` if
    /// it finds a slot that is not as it was written.
    bool insert(Key const & key, Value const & value) {
        EncodedKey<S> const wanted(key);
        auto place = locate(region_, places_, wanted);
        if (place.slot.state() == SlotState::empty && !roomForOneMore()) {
            move(size() + 1);
            place = locate(region_, places_, wanted);
        }
        auto counts = region_.counts();
        auto const before = place.slot.state();
        counts.live += before != SlotState::live ? 1U : 0U;
        counts.dead -= before == SlotState::dead ? 1U : 0U;
        place.slot.stateIs(SlotState::live);
        place.slot.keyIs(wanted);
        place.slot.valueIs(value);
        region_.change(Slot<S>::place(place.number), place.slot.sealed(place.number), counts);
        return before != SlotState::live;
    }

    /// Removes `key`; returns whether the table had it. Raises
    /// `CorruptionDetectedException`.
    bool erase(Key const & key) {
        auto place = locate(region_, places_, EncodedKey<S>(key));
        if (place.slot.state() != SlotState::live) {
            return false;
        }
        auto counts = region_.counts();
        --counts.live;
        ++counts.dead;
        place.slot.stateIs(SlotState::dead);
        place.slot.valueIs(Value());
        region_.change(Slot<S>::place(place.number), place.slot.sealed(place.number), counts);
        return true;
    }

    /// The value of `key`, or nullopt. Can raise `CorruptionDetectedException`.
    std::optional<Value> find(Key const & key) const {
        auto const place = locate(region_, places_, EncodedKey<S>(key));
        return place.slot.state() == SlotState::live ? std::optional(place.slot.value())
                                                     : std::nullopt;
    }

private:
    static constexpr U64 leastCapacity = 16;

    struct Place {
        U64 number;
        Slot<S> slot;
    };

    Writer(Destination destination, U64 entries)
        : destination_(std::move(destination)), region_(emptyRegion(entries)),
          places_(placesIn(region_)) {
        region_.publish({});
    }

    WritableRegion emptyRegion(U64 entries) const {
        WritableRegion region(destination_, formatOf<S>, capacityFor(entries));
        Slot<S> slot;
        for (U64 number = 0; number < region.capacity(); ++number) {
            region.fill(Slot<S>::place(number), slot.sealed(number));
        }
        return region;
    }

    static KeyPlaces<S> placesIn(WritableRegion const & region) noexcept {
        return {region.seed(), region.capacity()};
    }

    // At a load of two thirds, a present key is found in the second slot on average, and
    // the search for an absent one ends in the fifth (Knuth, volume 3, section 6.4, linear
    // probing).
    U64 capacityFor(U64 entries) const {
        if (entries >= maxCapacity / 2) {
            throw TableError(name(), "cannot hold " + std::to_string(entries) +
                                         " entries, at most " +
                                         std::to_string(maxCapacity / 2 - 1));
        }
        return std::max(entries + entries / 2 + 1, leastCapacity);
    }

    bool roomForOneMore() const noexcept {
        auto const & counts = region_.counts();
        return (counts.live + counts.dead + 1) * 3 <= region_.capacity() * 2;
    }

    // The slot of the key, live or dead, or the empty one that it would take.
    Place locate(WritableRegion const & region, KeyPlaces<S> const & places,
                 EncodedKey<S> const & wanted) const {
        U64 const capacity = places.capacity();
        Place place{wanted.firstSlot(places), {}};
        for (U64 visited = 0; visited < capacity; ++visited) {
            read(region, place);
            if (place.slot.state() == SlotState::empty || place.slot.holds(wanted)) {
                return place;
            }
            place.number = place.number + 1 == capacity ? 0 : place.number + 1;
        }
        throwNoEmptySlot(name(), capacity);
    }

    void read(WritableRegion const & region, Place & place) const {
        region.read(Slot<S>::place(place.number), place.slot.words());
        place.slot.check(name(), place.number);
    }

    // Leaves the dead slots behind, and makes room for as many entries again.
    void move(U64 entries) {
        auto larger = emptyRegion(entries * 2);
        auto const places = placesIn(larger);
        Place old{0, {}};
        for (; old.number < region_.capacity(); ++old.number) {
            read(region_, old);
            if (old.slot.state() == SlotState::live) {
                auto const place = locate(larger, places, EncodedKey<S>(old.slot.key()));
                larger.fill(Slot<S>::place(place.number), old.slot.sealed(place.number));
            }
        }
        larger.publish({.live = size()});
        region_.replaced();
        region_ = std::move(larger);
        places_ = places;
        ++moves_;
    }

    Destination destination_;
    WritableRegion region_;
    KeyPlaces<S> places_;
    U64 moves_ = 0;
};

} // namespace Pelo
