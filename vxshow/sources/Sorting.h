#pragma once

#include "vxshow/sources/DeadlineWatch.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

/// Sorting and merging of lists that can be long, under a deadline.
///
/// Lists are sorted in runs, which are then merged. The clock is looked at between runs and every
/// few thousand steps of a merge. Comparisons are not counted: there are many more of them than
/// steps. A list of one run, as nearly all are, is sorted by `std::sort` alone.
namespace vxshow::sources {

/// The most elements that are sorted or moved without a look at the clock: a few milliseconds.
inline constexpr std::size_t mostSortedAtOnce = 65536;

/// Merges the sorted ranges [first, middle) and [middle, last) of `all`. `spare` is overwritten.
/// Throws `TimedOut`; `all` then holds no more than valid elements.
template <class T, class Less>
void mergeNeighbours(std::vector<T> & all, std::size_t first, std::size_t middle, std::size_t last,
                     std::vector<T> & spare, Less less, DeadlineWatch & watch) {
    using Difference = std::ptrdiff_t;
    auto const at = [&](std::size_t index) { return all.begin() + static_cast<Difference>(index); };
    spare.clear();
    spare.reserve(middle - first);
    for (auto from = first; from != middle;) {
        watch.look();
        auto const next = std::min(middle, from + mostSortedAtOnce);
        spare.insert(spare.end(), std::move_iterator(at(from)), std::move_iterator(at(next)));
        from = next;
    }
    auto to = at(first);
    auto left = spare.begin();
    auto right = at(middle);
    auto const end = at(last);
    while (left != spare.end() && right != end) {
        watch.step();
        *to++ = less(*right, *left) ? std::move(*right++) : std::move(*left++);
    }
    // What is left of the second range is in its place.
    for (; left != spare.end(); ++left, ++to) {
        watch.step();
        *to = std::move(*left);
    }
}

/// Merges the sorted runs of `all`, of which each ends where the next one starts; `ends` has 0 and
/// the end of each. Neighbours are merged two by two until one is left. Throws `TimedOut`. It takes
/// memory for half as many elements.
template <class T, class Less>
void mergeRuns(std::vector<T> & all, std::vector<std::size_t> ends, Less less,
               DeadlineWatch & watch) {
    std::vector<T> spare;
    while (ends.size() > 2) {
        std::vector<std::size_t> next{0};
        for (std::size_t index = 2; index < ends.size(); index += 2) {
            watch.look();
            mergeNeighbours(all, ends[index - 2], ends[index - 1], ends[index], spare, less, watch);
            next.push_back(ends[index]);
        }
        if (next.back() != ends.back()) {
            next.push_back(ends.back());
        }
        ends = std::move(next);
    }
}

/// Sorts `all`; many lists already are. Throws `TimedOut`.
template <class T, class Less>
void sortList(std::vector<T> & all, Less less, DeadlineWatch & watch) {
    auto const isDescent = [&](T const & before, T const & now) {
        watch.step();
        return less(now, before);
    };
    if (std::adjacent_find(all.begin(), all.end(), isDescent) == all.end()) {
        return;
    }
    std::vector<std::size_t> ends{0};
    while (ends.back() != all.size()) {
        if (ends.back() != 0) {
            watch.look();
        }
        auto const last = std::min(all.size(), ends.back() + mostSortedAtOnce);
        std::sort(all.begin() + static_cast<std::ptrdiff_t>(ends.back()),
                  all.begin() + static_cast<std::ptrdiff_t>(last), less);
        ends.push_back(last);
    }
    mergeRuns(all, std::move(ends), less, watch);
}

/// Keeps the first of each elements in a row that are the same. Throws `TimedOut`.
template <class T, class Same>
void removeRepetitions(std::vector<T> & all, Same same, DeadlineWatch & watch) {
    auto const isSame = [&](T const & before, T const & now) {
        watch.step();
        return same(before, now);
    };
    all.erase(std::unique(all.begin(), all.end(), isSame), all.end());
}

} // namespace vxshow::sources
