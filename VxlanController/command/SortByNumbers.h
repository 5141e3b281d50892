#pragma once

#include "Vex/Types.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <span>
#include <vector>

namespace VxlanController::Cli {

/// Implements `sortByNumbers` and holds its buffer.
template <class Item, class Numbers, class Step>
class NumberSort {
public:
    NumberSort(Numbers & numbers, Step & step) : numbers_(numbers), step_(step) {}

    void sort(std::vector<Item> & items) {
        if (items.size() > smallSize) {
            distributed_.resize(items.size());
        }
        sortPart(items, 0);
    }

private:
    static constexpr std::size_t smallSize = 512;

    /// Sorts items whose numbers before the one at `place` are all equal.
    void sortPart(std::span<Item> items, std::size_t place) {
        if (items.size() <= smallSize) {
            std::sort(items.begin(), items.end(), [&](Item const & a, Item const & b) {
                step_();
                return numbers_(a) < numbers_(b);
            });
        } else if (place < numbers_(items.front()).size()) {
            distribute(items, place);
        }
    }

    void distribute(std::span<Item> items, std::size_t place) {
        auto const number = [&](Item const & item) -> Vex::U64 { return numbers_(item)[place]; };
        Vex::U64 least = ~Vex::U64{0};
        Vex::U64 greatest = 0;
        for (Item const & item : items) {
            step_();
            least = std::min(least, number(item));
            greatest = std::max(greatest, number(item));
        }
        if (least == greatest) {
            return sortPart(items, place + 1);
        }
        auto const bucketBits = static_cast<unsigned>(std::bit_width(items.size() / 4));
        auto const bits = static_cast<unsigned>(std::bit_width(greatest - least));
        unsigned const shift = bits > bucketBits ? bits - bucketBits : 0;
        auto const bucketOf = [&](Item const & item) {
            return static_cast<std::size_t>((number(item) - least) >> shift);
        };

        // An element holds where the next item of its bucket goes: the start of the bucket at
        // first, its end once all items are distributed.
        std::vector<Vex::U32> ends(static_cast<std::size_t>((greatest - least) >> shift) + 2);
        for (Item const & item : items) {
            ++ends[bucketOf(item) + 1];
        }
        for (std::size_t bucket = 1; bucket < ends.size(); ++bucket) {
            ends[bucket] += ends[bucket - 1];
        }
        for (Item const & item : items) {
            distributed_[ends[bucketOf(item)]++] = item;
        }
        std::copy_n(distributed_.begin(), items.size(), items.begin());
        std::size_t first = 0;
        for (std::size_t bucket = 0; bucket + 1 < ends.size(); ++bucket) {
            std::size_t const size = ends[bucket] - first;
            if (size > 1) {
                sortPart(items.subspan(first, size), shift > 0 ? place : place + 1);
            }
            first = ends[bucket];
        }
    }

    Numbers & numbers_;
    Step & step_;
    std::vector<Item> distributed_;
};

/// Sorts items in ascending order of `numbers(item)`, an array of `U64` with the most
/// significant number first; the order of items whose numbers are all equal is unspecified.
/// Calls `step()` at least once for each item after the first. Items are copied, and must be
/// default-constructible.
///
/// Large inputs are first distributed to buckets by how far their number is from the least one,
/// then each bucket is sorted the same way. Addresses are usually consecutive, or spread evenly
/// over the blocks of a few vendors: one or two passes leave buckets of a few items, and sorting
/// a million takes less than half the time of comparing them with each other. Each pass narrows
/// the range of a bucket by at least eight bits, so even the worst input takes at most eight
/// passes per number.
template <class Item, class Numbers, class Step>
void sortByNumbers(std::vector<Item> & items, Numbers && numbers, Step && step) {
    NumberSort<Item, Numbers, Step>(numbers, step).sort(items);
}

} // namespace VxlanController::Cli
