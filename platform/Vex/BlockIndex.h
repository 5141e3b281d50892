#pragma once

#include "Vex/BlockVisitors.h"

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace [[gnu::visibility("default")]] Vex {

/// The place of a part in an index; valid until parts are inserted or removed.
struct BlockPlace {
    U32 group = 0;
    U32 part = 0;

    bool operator==(BlockPlace const &) const = default;
};

/// The blocks of a large ordered collection, in key order.
///
/// Each has a copy of a key, its low: all keys of earlier blocks are below it, and no key
/// of its own or a later block is. So a search touches only the block it ends in. The
/// blocks are held in groups, so that a new one moves about a hundred neighbours at most;
/// even millions of entries need few groups, so two levels are enough.
///
/// Where a collection can have either an index or a block, the index is recognised by its
/// capacity of 0.
template <class Key, class Block>
class BlockIndex : public BlockHead {
    static_assert(std::copyable<Key>, "the index keeps copies of keys");

public:
    /// A block, or, if one of its entries has a visitor, a part of a block.
    struct Part {
        Block * block;
        BlockExtent extent;
        Key low;
    };

    /// An index of a single part, which takes all smaller keys too, whatever its low.
    explicit BlockIndex(Part part) : BlockHead(0) {
        groups_.push_back(Group{part.low, {}});
        groups_.back().parts.push_back(std::move(part));
    }

    Part & at(BlockPlace place) noexcept { return groups_[place.group].parts[place.part]; }

    bool empty() const noexcept { return groups_.empty(); }

    /// The part that holds the key, if any part does.
    BlockPlace find(Key const & key) const {
        auto const group = lastNotAbove(groups_, key);
        return {group, lastNotAbove(groups_[group].parts, key)};
    }

    BlockPlace last() const noexcept {
        return {static_cast<U32>(groups_.size() - 1),
                static_cast<U32>(groups_.back().parts.size() - 1)};
    }

    /// Steps to the next part; returns false and stays if there is none.
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

    /// Steps to the previous part; returns false and stays if there is none.
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

    /// Inserts a part after another; returns its place.
    BlockPlace insertAfter(BlockPlace before, Part part) noexcept {
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

    /// Removes a part; the caller then owns its block.
    void erase(BlockPlace place) noexcept {
        auto & parts = groups_[place.group].parts;
        parts.erase(parts.begin() + place.part);
        if (parts.empty()) {
            groups_.erase(groups_.begin() + place.group);
        } else if (place.part == 0) {
            // The entries can have moved to the previous group.
            groups_[place.group].low = parts.front().low;
        }
    }

    /// The number of entries in all parts; the collection updates it.
    std::size_t entries = 0;

private:
    static constexpr U32 maxParts = 128;

    struct Group {
        Key low;
        std::vector<Part> parts;
    };

    /// The last one whose low is not above the key; the first one if there is none.
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

    /// Moves the upper half of a full group into a new one; returns where `place` is
    /// afterwards.
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
