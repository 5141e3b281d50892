#pragma once

#include "Pelo/Region.h"
#include "Pelo/Slot.h"

#include <cstddef>
#include <iterator>
#include <memory>

namespace [[gnu::visibility("default")]] Pelo {

/// Iterates over the live keys of a table, in the order of their slots.
///
/// It keeps the memory that it walks over mapped. Each step raises
/// `CorruptionDetectedException` for a damaged slot, after which the iterator is at the
/// end. The last step also checks the count: if nothing changed during the walk, it must
/// have reached as many keys as the table's header says.
template <Schema S>
class Iterator {
public:
    using iterator_concept = std::input_iterator_tag;
    using value_type = typename S::Key;
    using difference_type = std::ptrdiff_t;

    Iterator() = default;

    /// Checks the header of `region` and starts at its first live key.
    explicit Iterator(std::shared_ptr<Region const> region) : region_(std::move(region)) {
        region_->check();
        auto const [counts, generation] = region_->state();
        expected_ = counts.live;
        generation_ = generation;
        advance();
    }

    /// False at the end of the table.
    explicit operator bool() const noexcept { return atKey_; }

    typename S::Key operator*() const { return slot_.key(); }

    typename S::Key key() const { return slot_.key(); }

    /// The value that the key had when the iterator reached it.
    typename S::Value value() const { return slot_.value(); }

    Iterator & operator++() {
        advance();
        return *this;
    }

    void operator++(int) { advance(); }

    friend bool operator==(Iterator const & iterator, std::default_sentinel_t) noexcept {
        return !iterator;
    }

private:
    void advance() {
        atKey_ = false;
        Region const & region = *region_;
        for (U64 const capacity = region.capacity(); next_ < capacity;) {
            U64 const number = next_++;
            region.read(Slot<S>::place(number), slot_.words());
            slot_.check(region.name(), number);
            if (slot_.state() == SlotState::live) {
                ++met_;
                atKey_ = true;
                return;
            }
        }
        if (met_ != expected_ && region.generation() == generation_) {
            throwLiveCount(region.name(), met_, expected_);
        }
    }

    std::shared_ptr<Region const> region_;
    Slot<S> slot_;
    U64 next_ = 0;
    U64 met_ = 0;
    U64 expected_ = 0;
    U64 generation_ = 0;
    bool atKey_ = false;
};

} // namespace Pelo
