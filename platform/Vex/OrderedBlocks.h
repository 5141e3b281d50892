#pragma once

#include "Vex/BlockIndex.h"
#include "Vex/OrderedBlock.h"

#include <bitset>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace [[gnu::visibility("default")]] Vex {

/// The blocks of an ordered collection: none while it is empty, a single block that grows
/// with it while it is small, then full-sized blocks under an index.
///
/// When a block with visitors must change, the entries around a visited one are moved out
/// into blocks of their own, and the visited entry stays as a part of one entry in the old
/// block. After the visitors have left, these fragments are joined again.
template <class Slot>
class OrderedBlocks {
public:
    using Key = typename Slot::Key;
    using Block = OrderedBlock<Slot>;

    /// A position in one part: at an entry, at the gap before an entry, or past the last
    /// entry. Valid until entries are inserted or removed.
    struct Where {
        Block * block = nullptr;
        BlockExtent * in = nullptr;
        Slot * at = nullptr;
        BlockPlace place{};

        bool atEnd() const noexcept { return at == block->end(*in); }
    };

    /// Refers to an entry (`at`) without being registered as a visitor; null at the end.
    struct Cursor {
        Block * block = nullptr;
        Slot * at = nullptr;
        Slot * end = nullptr;
        BlockPlace place{};
    };

    OrderedBlocks() = default;
    OrderedBlocks(OrderedBlocks const &) = delete;
    OrderedBlocks & operator=(OrderedBlocks const &) = delete;

    ~OrderedBlocks() { clear(); }

    std::size_t size() const noexcept {
        return !root_ ? 0 : indexed() ? index().entries : root_->extent.size();
    }

    bool empty() const noexcept { return root_ == nullptr; }

    void swap(OrderedBlocks & other) noexcept { std::swap(root_, other.root_); }

    /// The first entry whose key is not below `key`, within the one part that can hold the
    /// key; past that part's last entry if there is none. Must not be called on an empty
    /// collection.
    Where lowerBound(Key const & key) const {
        Where where = partFor(key);
        where.at = firstThat(where, [&](Slot const & slot) { return !(slot.key() < key); });
        return where;
    }

    /// The entry under `key`, or null.
    Slot * find(Key const & key) const {
        if (!root_) {
            return nullptr;
        }
        Where const where = lowerBound(key);
        return !where.atEnd() && !(key < where.at->key()) ? where.at : nullptr;
    }

    /// Past the last entry of all. Must not be called on an empty collection.
    Where pastLast() const noexcept {
        Where where = whereIs(indexed() ? index().last() : BlockPlace{});
        where.at = where.block->end(*where.in);
        return where;
    }

    Cursor first() const noexcept { return root_ ? cursorAt(whereIs({})) : Cursor{}; }

    /// The first entry whose key is above `key`.
    Cursor firstAfter(Key const & key) const {
        if (!root_) {
            return {};
        }
        Where where = partFor(key);
        where.at = firstThat(where, [&](Slot const & slot) { return key < slot.key(); });
        Cursor cursor{where.block, where.at, where.block->end(*where.in), where.place};
        if (where.atEnd()) {
            toNextPart(cursor);
        }
        return cursor;
    }

    void step(Cursor & cursor) const noexcept {
        if (++cursor.at == cursor.end) {
            toNextPart(cursor);
        }
    }

    /// Steps from the last entry of a part to the first entry of the next.
    void toNextPart(Cursor & cursor) const noexcept {
        cursor =
            indexed() && index().forward(cursor.place) ? cursorAt(whereIs(cursor.place)) : Cursor{};
    }

    /// Makes room for `entries` entries in an empty collection. The caller inserts them
    /// next.
    void reserve(std::size_t entries) noexcept {
        root_ = Block::make(std::min<std::size_t>(entries, Block::maxSlots));
    }

    /// Adds an entry whose key is above all others to the only block, if it has room and no
    /// visitor. Most tables are filled like this, entry by entry.
    bool append(Slot & slot) {
        if (!root_ || indexed() || root_->extent.end == root_->capacity || !root_->exclusive()) {
            return false;
        }
        auto * const block = static_cast<Block *>(root_);
        Slot * const end = block->end(block->extent);
        if (!(std::as_const(end[-1]).key() < slot.key())) {
            return false;
        }
        new (end) Slot(std::move(slot));
        ++block->extent.end;
        return true;
    }

    /// Inserts an entry at `where`, the place of its key; in an empty collection `where` is
    /// ignored.
    Slot * insert(Where where, Slot && slot) noexcept {
        if (!root_) {
            reserve(1);
            where = pastLast();
        } else if (!where.block->exclusive()) {
            Key const key(slot.key());
            where = isolate(where, &key);
        }
        if (where.in->size() == where.block->capacity) {
            where = makeRoom(where, slot);
        }
        if (indexed()) {
            ++index().entries;
        }
        return where.block->insert(*where.in, where.at, std::move(slot));
    }

    /// Removes an entry and returns it; returns a copy if the entry has a visitor.
    std::optional<Slot> extract(Where where) {
        std::optional<Slot> taken;
        if (where.block->exclusive()) {
            taken.emplace(std::move(*where.at));
        } else {
            taken.emplace(std::as_const(*where.at));
            where = isolate(where, nullptr);
        }
        remove(where);
        return taken;
    }

    void clear() noexcept {
        BlockHead * const root = std::exchange(root_, nullptr);
        if (!root) {
            return;
        }
        if (root->capacity != 0) {
            release(static_cast<Block *>(root), root->extent);
            return;
        }
        std::unique_ptr<Index> const all(static_cast<Index *>(root));
        BlockPlace place;
        do {
            release(all->at(place).block, all->at(place).extent);
        } while (all->forward(place));
    }

private:
    using Index = BlockIndex<Key, Block>;
    using Marks = std::bitset<Block::maxSlots>;

    bool indexed() const noexcept { return root_ && root_->capacity == 0; }

    Index & index() const noexcept { return *static_cast<Index *>(root_); }

    /// The entry at `offset` within a part.
    Where whereIs(BlockPlace place, std::ptrdiff_t offset = 0) const noexcept {
        if (!indexed()) {
            auto * const block = static_cast<Block *>(root_);
            return {block, &block->extent, block->begin(block->extent) + offset, {}};
        }
        auto & part = index().at(place);
        return {part.block, &part.extent, part.block->begin(part.extent) + offset, place};
    }

    static decltype(auto) keyOf(Slot const & slot) { return slot.key(); }

    Where partFor(Key const & key) const {
        return whereIs(indexed() ? index().find(key) : BlockPlace{});
    }

    static Cursor cursorAt(Where const & where) noexcept {
        return {where.block, where.at, where.block->end(*where.in), where.place};
    }

    /// The first entry of a part for which `holds` is true; it must be true for all that
    /// follow.
    template <class Predicate>
    static Slot * firstThat(Where const & part, Predicate holds) {
        Slot * first = part.block->begin(*part.in);
        std::size_t left = part.in->size();
        while (left > 0) {
            std::size_t const half = left / 2;
            bool const after = !holds(std::as_const(first[half]));
            first = after ? first + half + 1 : first;
            left = after ? left - half - 1 : half;
        }
        return first;
    }

    static void release(Block * block, BlockExtent const & extent) noexcept {
        Slot * const first = block->begin(extent);
        Slot * const last = block->end(extent);
        if (block->exclusive()) {
            std::destroy(first, last);
            Block::free(block);
            return;
        }
        Marks kept;
        block->handOverToVisitors(first, last,
                                  [&](void * slot) { kept.set(positionOf(*block, slot)); });
        for (Slot * at = first; at != last; ++at) {
            if (!kept.test(positionOf(*block, at))) {
                std::destroy_at(at);
            }
        }
        letGo(block);
    }

    static std::size_t positionOf(Block & block, void * slot) noexcept {
        return static_cast<std::size_t>(static_cast<Slot *>(slot) - block.slot(0));
    }

    static void letGo(Block * block) noexcept {
        if (block->disown()) {
            Block::free(block);
        }
    }

    /// Replaces the only block by an index that holds it.
    void makeIndex() noexcept {
        auto * const block = static_cast<Block *>(root_);
        auto all = std::make_unique<Index>(
            typename Index::Part{block, block->extent, Key(keyOf(*block->begin(block->extent)))});
        all->entries = block->extent.size();
        root_ = all.release();
    }

    /// Makes room in a full block for an entry; returns where to insert it.
    Where makeRoom(Where where, Slot const & slot) noexcept {
        auto const offset = where.at - where.block->begin(*where.in);
        if (where.block->capacity < Block::maxSlots) {
            return grow(where, offset);
        }
        if (!indexed()) {
            makeIndex();
        }
        bool const behindAll = where.place == index().last() && offset == Block::maxSlots;
        if (behindAll) {
            // Filling in key order leaves full blocks.
            auto const next = index().insertAfter(
                where.place, {Block::make(Block::maxSlots), {}, Key(slot.key())});
            return whereIs(next);
        }
        return split(where.place, offset);
    }

    /// Most sets have one or a few members, most tables about ten entries: the first steps
    /// save allocations at these sizes, then the capacity doubles.
    static constexpr std::size_t largerThan(std::size_t capacity) noexcept {
        return capacity < 4 ? 4 : capacity < 12 ? 12 : capacity * 2;
    }

    Where grow(Where where, std::ptrdiff_t offset) noexcept {
        auto * const bigger =
            Block::make(std::min<std::size_t>(largerThan(where.block->capacity), Block::maxSlots));
        BlockExtent extent;
        bigger->append(extent, where.block->begin(*where.in), where.block->end(*where.in));
        if (indexed()) {
            index().at(where.place).block = bigger;
            *where.in = extent;
        } else {
            bigger->extent = extent;
            root_ = bigger;
        }
        Block::free(where.block);
        return whereIs(where.place, offset);
    }

    Where split(BlockPlace place, std::ptrdiff_t offset) noexcept {
        constexpr std::ptrdiff_t half = Block::maxSlots / 2;
        Where const full = whereIs(place);
        Slot * const middle = full.at + half;
        auto const right =
            index().insertAfter(place, {Block::make(Block::maxSlots), {}, Key(keyOf(*middle))});
        auto left = right;
        index().back(left);
        Where const lower = whereIs(left);
        Where const upper = whereIs(right);
        upper.block->append(*upper.in, middle, lower.block->end(*lower.in));
        lower.in->end = static_cast<U16>(lower.in->begin + half);
        return offset <= half ? whereIs(left, offset) : whereIs(right, offset - half);
    }

    /// Removes an entry that has already been moved from or copied. Its block must have no
    /// visitor, or the entry must be a part of its own.
    void remove(Where where) noexcept {
        if (indexed()) {
            --index().entries;
        }
        if (where.block->exclusive()) {
            where.block->erase(*where.in, where.at);
        } else {
            bool shown = false;
            where.block->handOverToVisitors(where.at, where.at + 1, [&](void *) { shown = true; });
            if (!shown) {
                std::destroy_at(where.at);
            }
            *where.in = {};
        }
        if (where.in->size() == 0) {
            removePart(where);
        } else if (indexed() && where.in->size() <= Block::maxSlots / 4) {
            joinNeighbour(where.place);
        }
    }

    void removePart(Where const & where) noexcept {
        if (!indexed()) {
            root_ = nullptr;
        } else {
            index().erase(where.place);
            if (index().empty()) {
                delete &index();
                root_ = nullptr;
            }
        }
        letGo(where.block);
    }

    void joinNeighbour(BlockPlace place) noexcept {
        auto next = place;
        if (index().forward(next) && join(place, next)) {
            return;
        }
        auto before = place;
        if (index().back(before)) {
            join(before, place);
        }
    }

    /// Moves a part into the one before it, if both are small and can be moved.
    bool join(BlockPlace left, BlockPlace right) noexcept {
        auto & to = index().at(left);
        auto const & from = index().at(right);
        std::size_t const total = std::size_t{to.extent.size()} + from.extent.size();
        if (total > std::min<std::size_t>(Block::maxSlots / 2, to.block->capacity) ||
            !to.block->exclusive() || !from.block->exclusive()) {
            return false;
        }
        to.block->toFront(to.extent);
        to.block->append(to.extent, from.block->begin(from.extent), from.block->end(from.extent));
        Block::free(from.block);
        index().erase(right);
        return true;
    }

    /// Joins the fragments that walks have left before a part; returns where that part is
    /// afterwards.
    BlockPlace joinFragmentsBefore(BlockPlace place) noexcept {
        for (;;) {
            auto right = place;
            if (!index().back(right)) {
                return place;
            }
            auto left = right;
            if (!index().back(left) || !join(left, right)) {
                return place;
            }
            place = left;
            index().forward(place);
        }
    }

    /// Divides a part of a block that has visitors. With `inserted`, `where` is the gap for
    /// an entry with that key, and the result is a gap in a block that can be changed;
    /// without, `where` is an entry, and the result is where that entry is afterwards.
    Where isolate(Where where, Key const * inserted) noexcept {
        if (!indexed()) {
            makeIndex();
        }
        auto place = joinFragmentsBefore(where.place);
        Block * const old = where.block;
        Slot * const last = old->end(index().at(place).extent);
        Marks visited;
        old->forEachVisited([&](void * slot) { visited.set(positionOf(*old, slot)); });

        std::vector<typename Index::Part> parts;
        std::size_t chosen = 0;
        std::ptrdiff_t offset = 0;
        bool open = false;
        auto const openPart = [&](Key const & low) {
            if (!open) {
                parts.push_back({Block::make(Block::maxSlots), {}, low});
                open = true;
            }
        };
        for (Slot * at = old->begin(index().at(place).extent);; ++at) {
            if (inserted && at == where.at) {
                openPart(*inserted);
                chosen = parts.size() - 1;
                offset = parts.back().extent.end;
            }
            if (at == last) {
                break;
            }
            auto const position = static_cast<U16>(positionOf(*old, at));
            if (visited.test(position)) {
                old->own();
                parts.push_back({old, {position, static_cast<U16>(position + 1)}, keyOf(*at)});
                open = false;
            } else {
                openPart(keyOf(*at));
                parts.back().block->append(parts.back().extent, at, at + 1);
            }
            if (!inserted && at == where.at) {
                chosen = parts.size() - 1;
                offset = parts.back().extent.size() - 1;
            }
        }
        letGo(old);
        return whereIs(replace(place, std::move(parts), chosen), offset);
    }

    /// Replaces one part by several; returns the place of the chosen one.
    BlockPlace replace(BlockPlace place, std::vector<typename Index::Part> by,
                       std::size_t chosen) noexcept {
        index().at(place).block = by.front().block;
        index().at(place).extent = by.front().extent;
        for (std::size_t i = 1; i < by.size(); ++i) {
            place = index().insertAfter(place, std::move(by[i]));
        }
        for (std::size_t i = by.size() - 1; i > chosen; --i) {
            index().back(place);
        }
        return place;
    }

    BlockHead * root_ = nullptr;
};

} // namespace Vex
