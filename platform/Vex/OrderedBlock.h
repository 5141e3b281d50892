#pragma once

#include "Vex/BlockVisitors.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace [[gnu::visibility("default")]] Vex {

/// A block of an ordered collection: its head, followed by an array of slots.
///
/// Which of them hold entries is recorded in an extent, which the collection keeps
/// (BlockIndex.h). The functions that move entries are noexcept: a slot whose move throws,
/// or lack of memory, ends the process, as it does for every entity.
template <class Slot>
class OrderedBlock : public BlockHead {
public:
    /// A full block takes about 1 KB: moving half of it costs less than finding it.
    static constexpr U16 maxSlots =
        static_cast<U16>(std::clamp<std::size_t>(1024 / sizeof(Slot), 8, 128));

    /// A new, empty block with room for `capacity` entries.
    static OrderedBlock * make(std::size_t capacity) noexcept {
        void * memory = nullptr;
        if constexpr (overAligned) {
            memory = ::operator new (sizeFor(capacity), std::align_val_t{alignof(Slot)});
        } else {
            memory = ::operator new(sizeFor(capacity));
        }
        return new (memory) OrderedBlock(static_cast<U16>(capacity));
    }

    /// Frees the block, whose entries have already been destroyed.
    static void free(BlockHead * head) noexcept {
        auto * const block = static_cast<OrderedBlock *>(head);
        block->~OrderedBlock();
        if constexpr (overAligned) {
            ::operator delete (block, std::align_val_t{alignof(Slot)});
        } else {
            ::operator delete(block);
        }
    }

    Slot * slot(std::size_t position) noexcept {
        return reinterpret_cast<Slot *>(reinterpret_cast<std::byte *>(this) + slotsOffset) +
               position;
    }

    Slot * begin(BlockExtent const & in) noexcept { return slot(in.begin); }

    Slot * end(BlockExtent const & in) noexcept { return slot(in.end); }

    /// Inserts an entry into the extent before `at`. The block must have room for it.
    Slot * insert(BlockExtent & in, Slot * at, Slot && entry) noexcept {
        Slot * const last = end(in);
        if (in.end < capacity) {
            for (Slot * to = last; to != at; --to) {
                relocate(to - 1, to);
            }
            ++in.end;
        } else {
            for (Slot * to = begin(in) - 1; ++to != at;) {
                relocate(to, to - 1);
            }
            --in.begin;
            --at;
        }
        return new (at) Slot(std::move(entry));
    }

    /// Removes the entry at `at` from the extent.
    void erase(BlockExtent & in, Slot * at) noexcept {
        std::destroy_at(at);
        if (at == begin(in)) {
            ++in.begin;
            return;
        }
        Slot * const last = end(in) - 1;
        for (; at != last; ++at) {
            relocate(at + 1, at);
        }
        --in.end;
    }

    /// Moves the entries [from, to) to the end of the extent. The block must have room
    /// for them.
    void append(BlockExtent & in, Slot * from, Slot * to) noexcept {
        Slot * out = end(in);
        in.end = static_cast<U16>(in.end + (to - from));
        for (; from != to; ++from, ++out) {
            relocate(from, out);
        }
    }

    /// Moves the entries of the extent to the front of the block.
    void toFront(BlockExtent & in) noexcept {
        if (in.begin > 0) {
            BlockExtent front;
            append(front, begin(in), end(in));
            in = front;
        }
    }

private:
    explicit OrderedBlock(U16 slots) noexcept : BlockHead(slots) {}

    static constexpr std::size_t slotsOffset =
        (sizeof(BlockHead) + alignof(Slot) - 1) / alignof(Slot) * alignof(Slot);
    static constexpr bool overAligned = alignof(Slot) > __STDCPP_DEFAULT_NEW_ALIGNMENT__;

    static constexpr std::size_t sizeFor(std::size_t capacity) noexcept {
        return slotsOffset + capacity * sizeof(Slot);
    }

    static void relocate(Slot * from, Slot * to) noexcept {
        new (to) Slot(std::move(*from));
        std::destroy_at(from);
    }
};

} // namespace Vex
