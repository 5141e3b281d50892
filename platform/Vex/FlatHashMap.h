#pragma once

#include "Vex/Types.h"

#include <bit>
#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace [[gnu::visibility("default")]] Vex {

/// The hash table of published state: filled by one writer, then looked up and walked.
///
/// Entries stand side by side in one vector, in the order in which they came; beside it
/// lies an index of 32-bit positions, probed linearly. An entry so costs its own size and
/// some eight bytes, and no allocation of its own: state runs to millions of addresses in
/// tables from one entry to all of them. Tables of up to `unindexed` entries are searched
/// straight through. Nothing is ever removed; a table that shrinks is built anew.
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
        if (slots_.size() > unindexed && slots_.size() * 4 > index_.size() * 3) {
            rebuildIndex();
        } else if (!index_.empty()) {
            enter(static_cast<U32>(slots_.size() - 1));
        }
        return true;
    }

private:
    static constexpr std::size_t unindexed = 8;
    static constexpr U32 absent = 0xFFFFFFFF;

    U32 positionOf(Key const & key) const noexcept {
        if (index_.empty()) {
            for (std::size_t i = 0; i < slots_.size(); ++i) {
                if (slots_[i].key() == key) {
                    return static_cast<U32>(i);
                }
            }
            return absent;
        }
        std::size_t at = bucketOf(key);
        while (index_[at] != absent && !(slots_[index_[at]].key() == key)) {
            at = (at + 1) & (index_.size() - 1);
        }
        return index_[at];
    }

    std::size_t bucketOf(Key const & key) const noexcept {
        return std::hash<Key>()(key) & (index_.size() - 1);
    }

    void enter(U32 position) noexcept {
        std::size_t at = bucketOf(slots_[position].key());
        while (index_[at] != absent) {
            at = (at + 1) & (index_.size() - 1);
        }
        index_[at] = position;
    }

    void rebuildIndex() {
        index_.assign(std::bit_ceil(slots_.size() * 2), absent);
        for (std::size_t i = 0; i < slots_.size(); ++i) {
            enter(static_cast<U32>(i));
        }
    }

    std::vector<Slot> slots_;
    std::vector<U32> index_;
};

} // namespace Vex
