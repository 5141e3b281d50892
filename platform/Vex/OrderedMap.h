#pragma once

#include "Vex/OrderedBlocks.h"
#include "Vex/OrderedIterator.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace [[gnu::visibility("default")]] Vex {

/// The framework's ordered collection: entries in ascending key order, at most one for a
/// key. `SlotType` (Slot.h) says what an entry is and where its key stands.
///
/// Most collections are small and there are a great many of them, so an empty one is two
/// words without a heap block, a small one has a single block that grows with it, and only a
/// large one has many blocks and an index (OrderedBlocks.h). A search halves within one block,
/// a walk runs along it; filling in key order costs one comparison an entry, since the last
/// one is tried first. Entries move when others come or go, except one on which an iterator
/// stands. A version, bumped whenever that may have happened, tells an iterator that it must
/// find its place again.
///
/// Keys are copyable; moving a slot must not throw.
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
            blocks_.insert(blocks_.behindLast(), Slot(std::as_const(*from.at)));
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

    /// The entry under `key`; when there is none, the one that `make()` returns, inserted.
    /// Valid until the next insertion or removal. `make` must not change the collection.
    template <class Make>
    Slot & findOrInsert(Key const & key, Make && make) {
        auto const [where, found] = placeOf(key);
        return found ? *where.at : *insertAt(where, std::forward<Make>(make)());
    }

    /// Takes the entry under `key` out and returns it; nothing when there is none.
    std::optional<Slot> remove(Key const & key) {
        if (empty()) {
            return std::nullopt;
        }
        Where const where = blocks_.lowerBound(key);
        return isAt(where, key) ? takeOut(where) : std::nullopt;
    }

    /// Takes out the entry on which `position` stands and returns it; nothing when it is at
    /// the end or its entry is gone already. The iterator keeps standing where the entry was.
    std::optional<Slot> remove(Iterator & position) {
        if (!position || empty()) {
            return std::nullopt;
        }
        Where const where = blocks_.lowerBound(position.slot().key());
        bool const there = !where.atEnd() && where.at == &position.slot();
        return there ? takeOut(where) : std::nullopt;
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

    /// Entry by entry, key and element.
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

    /// Where a key stands, or where it would be inserted.
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
        Where where = blocks_.behindLast();
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

    std::optional<Slot> takeOut(Where const & where) {
        ++version_;
        return blocks_.takeOut(where);
    }

    Blocks blocks_;
    U64 version_ = 0;
};

} // namespace Vex
