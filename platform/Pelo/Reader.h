#pragma once

#include "Pelo/Iterator.h"

#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace [[gnu::visibility("default")]] Pelo {

/// A reader of a table in place. The writer can be another process.
///
/// A reader is cheap to copy; copies share one mapping. All operations except those that
/// open a table can raise `CorruptionDetectedException`, and none blocks the writer. A reader
/// opened with `open` or `attach` does not survive a file that is cut in place during a walk: the
/// process gets SIGBUS. Writers never cut a file, and their memory without a file cannot be cut. Of
/// a file that others can write, `copyOf` makes a reader that no one can harm.
template <Schema S>
class Reader {
public:
    using Key = typename S::Key;
    using Value = typename S::Value;

    /// Opens the table in a file; its path is the table's name. Raises `TableError` if it
    /// is not a table of this kind, and `CorruptionDetectedException`.
    static Reader open(std::string const & path) { return Reader(Region::open(path, formatOf<S>)); }

    /// Opens the table that `descriptor` refers to; the caller keeps the descriptor and
    /// can close it after the call. Raises the same errors as `open`.
    static Reader attach(int descriptor, std::string name) {
        return Reader(Region::attach(descriptor, std::move(name), formatOf<S>));
    }

    /// A copy of the table that `descriptor` refers to, which no later change or cut of the file
    /// reaches; the caller keeps the descriptor, whose offset moves. Raises the same errors as
    /// `open`, and `CorruptionDetectedException` for a file that is cut meanwhile.
    static Reader copyOf(int descriptor, std::string name) {
        return Reader(Region::copyOf(descriptor, std::move(name), formatOf<S>));
    }

    /// The table in memory of this process alone, as `Writer::inOwnMemory` makes it.
    static Reader of(std::shared_ptr<Mapping const> memory, std::string name) {
        return Reader(
            std::make_shared<Region const>(std::move(name), std::move(memory), formatOf<S>));
    }

    /// The table's name in messages.
    std::string const & name() const noexcept { return region_->name(); }

    /// The number of live entries.
    U64 size() const { return region_->state().counts.live; }

    /// True once the writer has moved to a bigger table. This one keeps what it held at
    /// that moment; its path, if any, leads to the new one.
    bool replaced() const { return region_->state().counts.replaced; }

    /// An iterator at the first live key. Checks the header and the length of the file
    /// again.
    Iterator<S> begin() const { return Iterator<S>(region_); }

    std::default_sentinel_t end() const noexcept { return {}; }

    /// The value of `key`, or nullopt if the table does not have it.
    std::optional<Value> find(Key const & key) const {
        EncodedKey<S> const wanted(key);
        U64 const capacity = places_.capacity();
        Slot<S> slot;
        U64 number = wanted.firstSlot(places_);
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

    /// The value of `key`, or a default one if the table does not have it.
    Value value(Key const & key) const { return find(key).value_or(Value()); }

private:
    explicit Reader(std::shared_ptr<Region const> region)
        : region_(std::move(region)), places_(region_->seed(), region_->capacity()) {}

    std::shared_ptr<Region const> region_;
    KeyPlaces<S> places_;
};

} // namespace Pelo
