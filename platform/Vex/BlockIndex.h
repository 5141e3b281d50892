#pragma once

#include "Vex/BlockVisitors.h"

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace [[gnu::visibility("default")]] Vex {

/// Which part of an index; valid until parts come or go.
struct BlockPlace {
    U32 group = 0;
    U32 part = 0;

    bool operator==(BlockPlace const &) const = default;
};

/// The blocks of a large ordered collection, in key order.
///
/// Each stands behind a copy of a key, its low: no key of an earlier block reaches it, none
/// of its own or of a later one lies below it. So a search touches no block but the one it
/// ends in. The blocks are held in groups, so that a new one moves some hundred neighbours
/// at most; of groups there are few even over millions of entries, and two levels do.
///
/// An index is told from a block, where a collection may have either, by its capacity of 0.
template <class Key, class Block>
class BlockIndex : public BlockHead {
    static_assert(std::copyable<Key>, "the index keeps copies of keys");

public:
    /// A block, or, where somebody stands on one of its entries, a part of one.
    struct Part {
        Block * block;
        BlockExtent extent;
        Key low;
    };

    /// An index of the one part, which holds the smallest keys whatever its low.
    explicit BlockIndex(Part part) : BlockHead(0) {
        groups_.push_back(Group{part.low, {}});
        groups_.back().parts.push_back(std::move(part));
    }

    Part & at(BlockPlace place) noexcept { return groups_[place.group].parts[place.part]; }

    bool empty() const noexcept { return groups_.empty(); }

    /// The part that holds the key if any does.
    BlockPlace find(Key const & key) const {
        auto const group = lastNotAbove(groups_, key);
        return {group, lastNotAbove(groups_[group].parts, key)};
    }

    BlockPlace last() const noexcept {
        return {static_cast<U32>(groups_.size() - 1),
                static_cast<U32>(groups_.back().parts.size() - 1)};
    }

    /// Steps to the next part; false, staying, when there is none.
    bool forward(BlockPlace & place) const noexcept {
        if (place.part + 1 < groups_[place.group].parts.size()) {
            ++place.part;
        } else if (place.group + 1 < groups_.size()) {
            place = {place.group + 1, 0};
        } else {
            return false;
        }
        return true;
    }

    /// Steps to the part before; false, staying, when there is none.
    bool back(BlockPlace & place) const noexcept {
        if (place.part > 0) {
            --place.part;
        } else if (place.group > 0) {
            --place.group;
            place.part = static_cast<U32>(groups_[place.group].parts.size() - 1);
        } else {
            return false;
        }
        return true;
    }

    /// Puts a part behind another; returns its place.
    BlockPlace insertBehind(BlockPlace before, Part part) noexcept {
        if (groups_[before.group].parts.size() == maxParts) {
            if (before == last()) {
                // Filling in key order leaves full groups.
                openGroup(before.group + 1, part.low).push_back(std::move(part));
                return last();
            }
            before = split(before);
        }
        auto & parts = groups_[before.group].parts;
        ++before.part;
        parts.insert(parts.begin() + before.part, std::move(part));
        return before;
    }

    /// Takes a part out; its block is the caller's.
    void erase(BlockPlace place) noexcept {
        auto & parts = groups_[place.group].parts;
        parts.erase(parts.begin() + place.part);
        if (parts.empty()) {
            groups_.erase(groups_.begin() + place.group);
        } else if (place.part == 0) {
            // The entries may have gone to the group before.
            groups_[place.group].low = parts.front().low;
        }
    }

    /// How many entries all parts hold together; the collection counts them.
    std::size_t entries = 0;

private:
    static constexpr U32 maxParts = 128;

    struct Group {
        Key low;
        std::vector<Part> parts;
    };

    /// The last whose low is not above the key; the first one, when there is no such.
    template <class Level>
    static U32 lastNotAbove(std::vector<Level> const & levels, Key const & key) {
        std::size_t at = 0;
        for (std::size_t left = levels.size() - 1; left > 0;) {
            std::size_t const half = (left + 1) / 2;
            bool const above = key < levels[at + half].low;
            at = above ? at : at + half;
            left = above ? half - 1 : left - half;
        }
        return static_cast<U32>(at);
    }

    std::vector<Part> & openGroup(U32 group, Key const & low) {
        auto & parts = groups_.insert(groups_.begin() + group, Group{low, {}})->parts;
        parts.reserve(maxParts);
        return parts;
    }

    /// Moves the upper half of a full group into a new one; returns where the place is then.
    BlockPlace split(BlockPlace place) {
        constexpr U32 half = maxParts / 2;
        auto & right = openGroup(place.group + 1, groups_[place.group].parts[half].low);
        auto & left = groups_[place.group].parts;
        std::move(left.begin() + half, left.end(), std::back_inserter(right));
        left.erase(left.begin() + half, left.end());
        return place.part < half ? place : BlockPlace{place.group + 1, place.part - half};
    }

    std::vector<Group> groups_;
};

} // namespace Vex
