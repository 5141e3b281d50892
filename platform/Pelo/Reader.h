#pragma once

#include "Pelo/Iterator.h"

#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace [[gnu::visibility("default")]] Pelo {

/// The table of a writer who may be another process, read in place.
///
/// A reader is cheap to copy; copies share one mapping. All operations but the two that
/// open a table may raise `CorruptionDetectedException`, and none blocks the writer. What
/// no reader can survive is a file that somebody cuts in the middle of a walk; writers never
/// do, and memory of theirs cannot be cut.
template <Schema S>
class Reader {
public:
    using Key = typename S::Key;
    using Value = typename S::Value;

    /// Opens the table in a file; its path is the table's name. Raises `TableError` when
    /// there is no such table there, and `CorruptionDetectedException`.
    static Reader open(std::string const & path) { return Reader(Region::open(path, formatOf<S>)); }

    /// Opens the table behind `descriptor`, which stays the caller's and need not outlive
    /// the call; errors as for `open`.
    static Reader attach(int descriptor, std::string name) {
        return Reader(Region::attach(descriptor, std::move(name), formatOf<S>));
    }

    /// What messages call the table.
    std::string const & name() const noexcept { return region_->name(); }

    /// The number of live entries.
    U64 size() const { return region_->state().counts.live; }

    /// True once the writer has moved to a bigger table. This one keeps what it held at
    /// that moment; the path, if it has one, leads to the new one.
    bool replaced() const { return region_->state().counts.replaced; }

    /// Stands on the first live key. Tests the header and the length of the file anew.
    Iterator<S> begin() const { return Iterator<S>(region_); }

    std::default_sentinel_t end() const noexcept { return {}; }

    /// The value of `key`, or nothing when the table does not hold it.
    std::optional<Value> find(Key const & key) const {
        EncodedKey<S> const wanted(key);
        U64 const capacity = region_->capacity();
        Slot<S> slot;
        U64 number = wanted.firstSlot(capacity);
        for (U64 visited = 0; visited < capacity; ++visited) {
            region_->read(Slot<S>::place(number), slot.words());
            slot.check(name(), number);
            if (slot.state() == SlotState::empty) {
                return std::nullopt;
            }
            if (slot.holds(wanted)) {
                return slot.state() == SlotState::live ? std::optional(slot.value()) : std::nullopt;
            }
            number = number + 1 == capacity ? 0 : number + 1;
        }
        throwNoEmptySlot(name(), capacity);
    }

    /// The value of `key`, or a default-made one when the table does not hold it.
    Value value(Key const & key) const { return find(key).value_or(Value()); }

private:
    explicit Reader(std::shared_ptr<Region const> region) : region_(std::move(region)) {}

    std::shared_ptr<Region const> region_;
};

} // namespace Pelo
