#pragma once

#include "Vex/BlockIndex.h"
#include "Vex/BlockVisitors.h"
#include "Vex/OrderedBlock.h"

#include <cstddef>
#include <iterator>
#include <type_traits>

namespace [[gnu::visibility("default")]] Vex {

/// A forward iterator over an ordered collection.
///
/// The current entry stays in place, with key and element readable, until the iterator steps
/// on, whatever happens to the entry or the collection. If the collection has changed since
/// the last step, the next step finds its place again by key: it reaches entries inserted
/// after the current one and never returns an entry twice. The collection itself must outlive
/// every step.
template <class Map>
class OrderedIterator : private BlockVisitor {
public:
    using Slot = typename Map::Slot;
    using iterator_category = std::forward_iterator_tag;
    using iterator_concept = std::forward_iterator_tag;
    using value_type = std::remove_cvref_t<decltype(std::declval<Slot const &>().view())>;
    using reference = decltype(std::declval<Slot const &>().view());
    using pointer = value_type const *;
    using difference_type = std::ptrdiff_t;

    OrderedIterator() = default;

    OrderedIterator(OrderedIterator const & other) noexcept
        : BlockVisitor(), map_(other.map_), end_(other.end_), place_(other.place_),
          version_(other.version_) {
        join(other);
    }

    ~OrderedIterator() { leaveBlock(); }

    OrderedIterator & operator=(OrderedIterator const & other) noexcept {
        if (this != &other) {
            leaveBlock();
            join(other);
            map_ = other.map_;
            end_ = other.end_;
            place_ = other.place_;
            version_ = other.version_;
        }
        return *this;
    }

    /// False at the end of the collection.
    explicit operator bool() const noexcept { return visited() != nullptr; }

    reference operator*() const noexcept { return slot().view(); }

    pointer operator->() const noexcept { return &slot().view(); }

    /// The key of the entry.
    decltype(auto) key() const { return slot().key(); }

    /// The whole entry: key and element.
    Slot const & slot() const noexcept { return *static_cast<Slot const *>(visited()); }

    OrderedIterator & operator++() {
        if (version_ == map_->version()) {
            Slot * const next = static_cast<Slot *>(visited()) + 1;
            if (next != end_) {
                stepTo(next);
            } else {
                Cursor cursor{nullptr, nullptr, nullptr, place_};
                map_->blocks_.toNextPart(cursor);
                moveTo(cursor);
            }
        } else {
            moveTo(map_->blocks_.firstAfter(slot().key()));
            version_ = map_->version();
        }
        return *this;
    }

    OrderedIterator operator++(int) {
        OrderedIterator before = *this;
        ++*this;
        return before;
    }

    /// Equal when both refer to the same entry or both are at the end.
    friend bool operator==(OrderedIterator const & a, OrderedIterator const & b) noexcept {
        return a.visited() == b.visited();
    }

private:
    friend Map;
    using Block = OrderedBlock<Slot>;
    using Cursor = typename Map::Blocks::Cursor;

    OrderedIterator(Map const & map, Cursor const & cursor) noexcept
        : map_(&map), version_(map.version()) {
        moveTo(cursor);
    }

    void moveTo(Cursor const & cursor) noexcept {
        leaveBlock();
        if (cursor.at) {
            enter(cursor.block, cursor.at);
            end_ = cursor.end;
            place_ = cursor.place;
        }
    }

    void leaveBlock() noexcept {
        leave([](void * slot) { std::destroy_at(static_cast<Slot *>(slot)); }, &Block::free);
    }

    Map const * map_ = nullptr;
    Slot * end_ = nullptr;
    BlockPlace place_;
    U64 version_ = 0;
};

} // namespace Vex
