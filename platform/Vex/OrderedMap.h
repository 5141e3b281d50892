#pragma once

#include "Vex/OrderedBlocks.h"
#include "Vex/OrderedIterator.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace [[gnu::visibility("default")]] Vex {

/// The framework's ordered collection: entries in ascending key order, at most one per
/// key. `SlotType` (Slot.h) defines what an entry is and where its key is.
///
/// Most collections are small and there are a great many of them, so an empty one is two
/// words without a heap block, a small one has a single block that grows with it, and only a
/// large one has many blocks and an index (OrderedBlocks.h). A search is a binary search
/// within one block, a walk steps along it; filling in key order costs one comparison per
/// entry, since the last entry is tried first. Entries move when others are inserted or
/// removed, except an entry that an iterator refers to. A version, bumped whenever entries
/// can have moved, tells an iterator that it must find its place again.
///
/// Keys are copyable; moving a slot must not throw. If there is no memory for an entry, inserting
/// it ends the process, as in every collection.
template <class SlotType>
class OrderedMap {
public:
    using Slot = SlotType;
    using Key = typename Slot::Key;
    using Iterator = OrderedIterator<OrderedMap>;
    using const_iterator = Iterator;

    OrderedMap() = default;

    OrderedMap(OrderedMap const & other) {
        if (other.empty()) {
            return;
        }
        blocks_.reserve(other.size());
        for (auto from = other.blocks_.first(); from.at; other.blocks_.step(from)) {
            blocks_.insert(blocks_.pastLast(), Slot(std::as_const(*from.at)));
        }
    }

    OrderedMap(OrderedMap && other) noexcept { swap(other); }

    ~OrderedMap() = default;

    OrderedMap & operator=(OrderedMap other) noexcept {
        swap(other);
        return *this;
    }

    Iterator begin() const noexcept { return Iterator(*this, blocks_.first()); }

    Iterator end() const noexcept { return Iterator(*this, {}); }

    std::size_t size() const noexcept { return blocks_.size(); }

    bool empty() const noexcept { return blocks_.empty(); }

    /// Changes whenever an entry is inserted or removed.
    U64 version() const noexcept { return version_; }

    /// The entry under `key`, or null; never inserts. Valid until the next insertion or removal.
    Slot const * find(Key const & key) const { return blocks_.find(key); }

    Slot * find(Key const & key) { return blocks_.find(key); }

    bool has(Key const & key) const { return blocks_.find(key) != nullptr; }

    /// Inserts `slot`, or overwrites the element of the entry with its key.
    void upsert(Slot slot) {
        if (blocks_.append(slot)) {
            ++version_;
            return;
        }
        auto const [where, found] = placeOf(slot.key());
        if (found) {
            where.at->element() = std::move(slot.element());
        } else {
            insertAt(where, std::move(slot));
        }
    }

    /// The entry under `key`; if there is none, inserts the one that `make()` returns.
    /// Valid until the next insertion or removal. `make` must not change the collection.
    template <class Make>
    Slot & findOrInsert(Key const & key, Make && make) {
        auto const [where, found] = placeOf(key);
        return found ? *where.at : *insertAt(where, std::forward<Make>(make)());
    }

    /// Removes the entry under `key` and returns it; nullopt if there is none.
    std::optional<Slot> remove(Key const & key) {
        if (empty()) {
            return std::nullopt;
        }
        Where const where = blocks_.lowerBound(key);
        return isAt(where, key) ? extract(where) : std::nullopt;
    }

    /// Removes the entry at `position` and returns it; nullopt if `position` is at the end or
    /// its entry has already been removed. The iterator keeps its place.
    std::optional<Slot> remove(Iterator & position) {
        if (!position || empty()) {
            return std::nullopt;
        }
        Where const where = blocks_.lowerBound(position.slot().key());
        bool const there = !where.atEnd() && where.at == &position.slot();
        return there ? extract(where) : std::nullopt;
    }

    void clear() noexcept {
        ++version_;
        blocks_.clear();
    }

    void swap(OrderedMap & other) noexcept {
        blocks_.swap(other.blocks_);
        ++version_;
        ++other.version_;
    }

    /// Compares keys and elements, entry by entry.
    friend bool operator==(OrderedMap const & a, OrderedMap const & b) {
        if (&a == &b) {
            return true;
        }
        if (a.size() != b.size()) {
            return false;
        }
        auto x = a.blocks_.first();
        auto y = b.blocks_.first();
        for (; x.at; a.blocks_.step(x), b.blocks_.step(y)) {
            if (!(std::as_const(*x.at) == std::as_const(*y.at))) {
                return false;
            }
        }
        return true;
    }

private:
    friend Iterator;
    using Blocks = OrderedBlocks<Slot>;
    using Where = typename Blocks::Where;

    /// Where a key is, or where it would be inserted.
    struct Place {
        Where where;
        bool found;
    };

    static bool isAt(Where const & where, Key const & key) {
        return !where.atEnd() && !(key < std::as_const(*where.at).key());
    }

    Place placeOf(Key const & key) const {
        if (empty()) {
            return {{}, false};
        }
        Where where = blocks_.pastLast();
        if (std::as_const(where.at[-1]).key() < key) {
            return {where, false};
        }
        where = blocks_.lowerBound(key);
        return {where, isAt(where, key)};
    }

    Slot * insertAt(Where const & where, Slot && slot) noexcept {
        ++version_;
        return blocks_.insert(where, std::move(slot));
    }

    std::optional<Slot> extract(Where const & where) {
        ++version_;
        return blocks_.extract(where);
    }

    Blocks blocks_;
    U64 version_ = 0;
};

} // namespace Vex
