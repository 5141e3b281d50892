#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace vxshow::state::narrow {

/// A set of ordered values, kept as intervals: 1 to 16777215 takes one entry, and a look-up among N
/// intervals takes log N steps. Equal sets have equal intervals only if they touch nowhere: 1-2 and
/// 3-4 are not joined, as a type need not know what comes after a value.
template <class Value>
class Intervals {
public:
    /// The values from `first` to `last`, both included.
    struct Interval {
        Value first;
        Value last;

        bool operator==(Interval const &) const = default;
    };

    Intervals() = default;

    /// The union of `intervals`, in any order, each with `first` not above `last`.
    explicit Intervals(std::vector<Interval> intervals) {
        std::sort(intervals.begin(), intervals.end(),
                  [](Interval const & a, Interval const & b) { return a.first < b.first; });
        for (Interval const & next : intervals) {
            if (intervals_.empty() || intervals_.back().last < next.first) {
                intervals_.push_back(next);
            } else if (intervals_.back().last < next.last) {
                intervals_.back().last = next.last;
            }
        }
    }

    /// True if there is no value in the set.
    bool empty() const noexcept { return intervals_.empty(); }

    bool contains(Value const & value) const { return intersects({value, value}); }

    /// Whether any value of `other` is in the set.
    bool intersects(Interval const & other) const {
        auto const after = std::upper_bound(
            intervals_.begin(), intervals_.end(), other.last,
            [](Value const & value, Interval const & interval) { return value < interval.first; });
        return after != intervals_.begin() && !(std::prev(after)->last < other.first);
    }

    /// In ascending order; none overlaps another.
    std::vector<Interval> const & intervals() const noexcept { return intervals_; }

private:
    std::vector<Interval> intervals_;
};

} // namespace vxshow::state::narrow
