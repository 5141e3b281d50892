#pragma once

#include "Vex/Types.h"

#include <bit>
#include <cstddef>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

namespace [[gnu::visibility("default")]] Vex {

/// The hash table of published state: filled by one writer, then looked up and walked.
///
/// Entries are stored in one vector, in the order of insertion; a separate index holds hashes
/// and positions, 32 bits each, and is probed linearly. So a search touches an entry only if
/// its hash matches, and a growing index is filled from the old one. An entry costs its own
/// size and about sixteen bytes, without an allocation of its own: state runs to millions of
/// addresses, spread over tables of one entry to all of them. Tables of up to `unindexed`
/// entries are searched linearly. Entries are added one by one, or all at once if the whole
/// table is known (`fill`). Single entries are never removed; a table that shrinks is built
/// anew.
///
/// Hashes are `std::hash` of the key, which must be `keyedHash` if keys come from outside.
///
/// If there is no memory for an entry, inserting it ends the process, as in every collection.
template <class SlotType>
class FlatHashMap {
public:
    using Slot = SlotType;
    using Key = typename Slot::Key;

    /// Iterates in the table's own order and returns what a reader sees of each slot.
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

    /// How many entries or places of the index a search for `key` looks at: a measure of how
    /// well the hash spreads the keys that are here.
    std::size_t searchSteps(Key const & key) const noexcept {
        if (index_.empty()) {
            return slots_.size();
        }
        U32 const hash = hashOf(key);
        std::size_t const mask = index_.size() - 1;
        std::size_t steps = 1;
        for (std::size_t at = hash & mask; !endsSearch(index_[at], hash, key);
             at = (at + 1) & mask) {
            ++steps;
        }
        return steps;
    }

    /// Inserts `slot` and returns true, or overwrites the entry with its key and returns
    /// false.
    bool upsert(Slot slot) noexcept {
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

    /// Removes every entry but keeps the memory, for a caller that fills one table after
    /// another.
    void clear() noexcept {
        slots_.clear();
        index_.clear();
    }

    /// Replaces all entries by `slots`, in their order, and leaves `slots` empty. A small
    /// table takes no more memory than its entries need, so that a caller that fills many
    /// tables keeps the vector's memory for the next one; a large table swaps its memory with
    /// the vector's.
    ///
    /// The keys are compared only here, all at once, which for a large table takes a third of
    /// the time of as many insertions. Returns the position of the first slot whose key an
    /// earlier slot has, or nullopt. After a position was returned, the table must not be
    /// searched.
    std::optional<std::size_t> fill(std::vector<Slot> & slots) noexcept {
        constexpr std::size_t small = 64;
        index_.clear();
        if (slots.size() > small) {
            slots_.swap(slots);
        } else {
            slots_.assign(std::make_move_iterator(slots.begin()),
                          std::make_move_iterator(slots.end()));
        }
        slots.clear();
        return slots_.size() > unindexed ? fillIndex() : firstRepeated();
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
            if (endsSearch(bucket, hash, key)) {
                return bucket.position;
            }
        }
    }

    bool endsSearch(Bucket const & bucket, U32 hash, Key const & key) const noexcept {
        return bucket.position == absent ||
               (bucket.hash == hash && slots_[bucket.position].key() == key);
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
        std::vector<Bucket> const old = std::exchange(index_, emptyIndex());
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

    std::vector<Bucket> emptyIndex() const {
        return std::vector<Bucket>(std::bit_ceil(slots_.size() * 4 / 3 + 1));
    }

    std::optional<std::size_t> firstRepeated() const noexcept {
        for (std::size_t i = 1; i < slots_.size(); ++i) {
            for (std::size_t before = 0; before < i; ++before) {
                if (slots_[before].key() == slots_[i].key()) {
                    return i;
                }
            }
        }
        return std::nullopt;
    }

    /// Builds the index of all entries; stops at the first one with a repeated key.
    std::optional<std::size_t> fillIndex() {
        // The buckets are scattered in memory: prefetched this early, each has arrived by
        // the time it is needed.
        constexpr std::size_t ahead = 16;
        index_ = emptyIndex();
        std::size_t const mask = index_.size() - 1;
        for (std::size_t i = 0; i < slots_.size(); ++i) {
            if (i + ahead < slots_.size()) {
                __builtin_prefetch(&index_[hashOf(slots_[i + ahead].key()) & mask], 1);
            }
            Key const & key = slots_[i].key();
            Bucket const bucket{hashOf(key), static_cast<U32>(i)};
            std::size_t at = bucket.hash & mask;
            for (; index_[at].position != absent; at = (at + 1) & mask) {
                if (index_[at].hash == bucket.hash && slots_[index_[at].position].key() == key) {
                    return i;
                }
            }
            index_[at] = bucket;
        }
        return std::nullopt;
    }

    std::vector<Slot> slots_;
    std::vector<Bucket> index_;
};

} // namespace Vex
