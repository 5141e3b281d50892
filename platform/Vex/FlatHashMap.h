#pragma once

#include "Vex/Types.h"

#include <bit>
#include <cstddef>
#include <functional>
#include <iterator>
#include <utility>
#include <vector>

namespace [[gnu::visibility("default")]] Vex {

/// The hash table of published state: filled by one writer, then looked up and walked.
///
/// Entries stand side by side in one vector, in the order in which they came; beside it
/// lies an index of hashes and positions, 32 bits each, probed linearly. A search so touches
/// an entry only when its hash fits, and a growing index is filled from the old one. An entry
/// costs its own size and some sixteen bytes, and no allocation of its own: state runs to
/// millions of addresses in tables from one entry to all of them. Tables of up to `unindexed`
/// entries are searched straight through. No entry is ever removed by itself; a table that shrinks
/// is built anew.
template <class SlotType>
class FlatHashMap {
public:
    using Slot = SlotType;
    using Key = typename Slot::Key;

    /// A walk in the table's own order that hands out what a reader sees of each slot.
    class Iterator {
    public:
        explicit Iterator(Slot const * at) noexcept : at_(at) {}

        decltype(auto) operator*() const noexcept { return at_->view(); }

        auto operator->() const noexcept { return &at_->view(); }

        decltype(auto) key() const { return at_->key(); }

        Iterator & operator++() noexcept {
            ++at_;
            return *this;
        }

        bool operator==(Iterator const & other) const noexcept = default;

    private:
        Slot const * at_;
    };

    Iterator begin() const noexcept { return Iterator(slots_.data()); }

    Iterator end() const noexcept { return Iterator(slots_.data() + slots_.size()); }

    std::size_t size() const noexcept { return slots_.size(); }

    bool empty() const noexcept { return slots_.empty(); }

    /// The entry under `key`, or null. Valid until the next insertion.
    Slot const * find(Key const & key) const noexcept {
        U32 const position = positionOf(key);
        return position == absent ? nullptr : &slots_[position];
    }

    /// Inserts `slot` and returns true, or overwrites the entry of its key and returns false.
    bool upsert(Slot slot) {
        U32 const position = positionOf(slot.key());
        if (position != absent) {
            slots_[position] = std::move(slot);
            return false;
        }
        slots_.push_back(std::move(slot));
        if (slots_.size() > unindexed) {
            if (slots_.size() * 4 > index_.size() * 3) {
                growIndex();
            }
            enter({hashOf(slots_.back().key()), static_cast<U32>(slots_.size() - 1)});
        }
        return true;
    }

    /// Removes every entry and keeps the room, for whoever fills one table after the other.
    void clear() noexcept {
        slots_.clear();
        index_.clear();
    }

    /// Takes over the entries of `other`, which is empty then. A small table takes no more
    /// room than its entries need, and `other` keeps its own; of a large one the room goes
    /// along.
    void takeFrom(FlatHashMap & other) {
        constexpr std::size_t small = 64;
        if (other.slots_.size() > small) {
            slots_ = std::exchange(other.slots_, {});
            index_ = std::exchange(other.index_, {});
            return;
        }
        slots_.assign(std::make_move_iterator(other.slots_.begin()),
                      std::make_move_iterator(other.slots_.end()));
        index_ = other.index_;
        other.clear();
    }

private:
    static constexpr std::size_t unindexed = 16;
    static constexpr U32 absent = 0xFFFFFFFF;

    struct Bucket {
        U32 hash = 0;
        U32 position = absent;
    };

    static U32 hashOf(Key const & key) noexcept { return static_cast<U32>(std::hash<Key>()(key)); }

    U32 positionOf(Key const & key) const noexcept {
        if (index_.empty()) {
            for (std::size_t i = 0; i < slots_.size(); ++i) {
                if (slots_[i].key() == key) {
                    return static_cast<U32>(i);
                }
            }
            return absent;
        }
        U32 const hash = hashOf(key);
        std::size_t const mask = index_.size() - 1;
        for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
            Bucket const & bucket = index_[at];
            if (bucket.position == absent ||
                (bucket.hash == hash && slots_[bucket.position].key() == key)) {
                return bucket.position;
            }
        }
    }

    void enter(Bucket const & bucket) noexcept {
        std::size_t const mask = index_.size() - 1;
        std::size_t at = bucket.hash & mask;
        while (index_[at].position != absent) {
            at = (at + 1) & mask;
        }
        index_[at] = bucket;
    }

    void growIndex() {
        std::vector<Bucket> const old =
            std::exchange(index_, std::vector<Bucket>(std::bit_ceil(slots_.size() * 2)));
        if (old.empty()) {
            for (std::size_t i = 0; i + 1 < slots_.size(); ++i) {
                enter({hashOf(slots_[i].key()), static_cast<U32>(i)});
            }
        }
        for (Bucket const & bucket : old) {
            if (bucket.position != absent) {
                enter(bucket);
            }
        }
    }

    std::vector<Slot> slots_;
    std::vector<Bucket> index_;
};

} // namespace Vex
