#pragma once

#include "Vex/Types.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <span>
#include <vector>

namespace VxlanController::Cli {

/// What `sortByNumbers` does, with the room that it needs for it.
template <class Item, class Numbers, class Step>
class NumberSort {
public:
    NumberSort(Numbers & numbers, Step & step) : numbers_(numbers), step_(step) {}

    void sort(std::vector<Item> & items) {
        if (items.size() > few) {
            dealt_.resize(items.size());
        }
        sortPart(items, 0);
    }

private:
    static constexpr std::size_t few = 512;

    /// Sorts items that agree in all numbers before the one at `place`.
    void sortPart(std::span<Item> items, std::size_t place) {
        if (items.size() <= few) {
            std::sort(items.begin(), items.end(), [&](Item const & a, Item const & b) {
                step_();
                return numbers_(a) < numbers_(b);
            });
        } else if (place < numbers_(items.front()).size()) {
            deal(items, place);
        }
    }

    void deal(std::span<Item> items, std::size_t place) {
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
        auto const pileBits = static_cast<unsigned>(std::bit_width(items.size() / 4));
        auto const bits = static_cast<unsigned>(std::bit_width(greatest - least));
        unsigned const shift = bits > pileBits ? bits - pileBits : 0;
        auto const pileOf = [&](Item const & item) {
            return static_cast<std::size_t>((number(item) - least) >> shift);
        };

        // Where a pile starts is where its next item goes; when all are dealt, it is its end.
        std::vector<Vex::U32> ends(static_cast<std::size_t>((greatest - least) >> shift) + 2);
        for (Item const & item : items) {
            ++ends[pileOf(item) + 1];
        }
        for (std::size_t pile = 1; pile < ends.size(); ++pile) {
            ends[pile] += ends[pile - 1];
        }
        for (Item const & item : items) {
            dealt_[ends[pileOf(item)]++] = item;
        }
        std::copy_n(dealt_.begin(), items.size(), items.begin());
        std::size_t first = 0;
        for (std::size_t pile = 0; pile + 1 < ends.size(); ++pile) {
            std::size_t const size = ends[pile] - first;
            if (size > 1) {
                sortPart(items.subspan(first, size), shift > 0 ? place : place + 1);
            }
            first = ends[pile];
        }
    }

    Numbers & numbers_;
    Step & step_;
    std::vector<Item> dealt_;
};

/// Sorts items by `numbers(item)`, an array of `U64` whose first number counts most, ascending;
/// those that agree in all numbers stand in no particular order. Calls `step()` at
/// least as often as there are items behind the first. Items are copied, and made in advance.
///
/// Many items are first dealt out to piles by the distance of their numbers from the least
/// one, then each pile is sorted alike. Addresses are numbered through, or drawn evenly from
/// the blocks of a few makers: one or two deals leave piles of a few items, and a million take
/// less than half of the time of comparing all with all. Every deal takes eight bits at least
/// off the range of a pile, so the worst of numbers takes eight deals each.
template <class Item, class Numbers, class Step>
void sortByNumbers(std::vector<Item> & items, Numbers && numbers, Step && step) {
    NumberSort<Item, Numbers, Step>(numbers, step).sort(items);
}

} // namespace VxlanController::Cli
