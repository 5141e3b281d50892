#pragma once

#include "Vex/RefCount.h"
#include "Vex/Types.h"

#include <atomic>

/// Tracks the iterators that are inside a block of an ordered collection.
///
/// An entry must stay where it is while an iterator refers to it. This holds for that entry
/// only: its neighbours can move or be removed. A count on the block would not identify the
/// entry, and a count on every entry would be touched at each step of a walk. So an iterator
/// adds itself to the block's list when it enters and removes itself when it leaves; steps
/// within the block do not touch the list. The collection reads the list when it is about to
/// change the block, which is rare during a walk.
namespace [[gnu::visibility("default")]] Vex {

class BlockVisitor;

/// Which slots of a block hold entries: from `begin` up to but not including `end`.
struct BlockExtent {
    U16 begin = 0;
    U16 end = 0;

    U16 size() const noexcept { return static_cast<U16>(end - begin); }
};

/// The start of every block. The slots follow it and are managed by the collection.
class BlockHead {
public:
    explicit BlockHead(U16 slots) noexcept : capacity(slots) {}

    BlockHead(BlockHead const &) = delete;
    BlockHead & operator=(BlockHead const &) = delete;

    /// Whether the block holds a single extent and has no visitor, so that its entries
    /// can be moved.
    bool exclusive() const noexcept;

    /// Adds one extent to the block's count.
    void own() noexcept;

    /// Takes one extent from the block's count. True if neither extent nor visitor is
    /// left: the caller must free the block.
    [[nodiscard]] bool disown() noexcept;

    /// Calls `mark` with every slot of the block that has a visitor.
    template <class Mark>
    void forEachVisited(Mark && mark) const;

    /// Hands the visited entries in the slots [from, to) over to their visitors, and calls
    /// `mark` with the slot of each visitor. The last visitor of an entry destroys it.
    template <class Mark>
    void handOverToVisitors(void const * from, void const * to, Mark && mark) noexcept;

    /// The slots in use, while the block is the collection's only one.
    BlockExtent extent;
    U16 const capacity;

private:
    friend class BlockVisitor;
    friend class BlockGuard;

    /// The number of the collection's extents in the block.
    U8 owners_ = 1;
    mutable std::atomic<bool> busy_{false};
    BlockVisitor * first_ = nullptr;
};

/// Gives one thread exclusive use of a block's list while the guard lives, if the
/// thread-safe switch is on.
class BlockGuard {
public:
    explicit BlockGuard(BlockHead const & block) noexcept
        : busy_(threadSafePtrSwitch.load(std::memory_order_relaxed) ? &block.busy_ : nullptr) {
        if (busy_) {
            lock();
        }
    }

    BlockGuard(BlockGuard const &) = delete;
    BlockGuard & operator=(BlockGuard const &) = delete;

    ~BlockGuard() {
        if (busy_) {
            busy_->store(false, std::memory_order_release);
        }
    }

private:
    void lock() noexcept;

    std::atomic<bool> * busy_;
};

/// A visitor of an entry: the base of an iterator. Neither copied nor moved itself, since
/// the block points to it.
class BlockVisitor {
public:
    BlockVisitor() = default;
    BlockVisitor(BlockVisitor const &) = delete;
    BlockVisitor & operator=(BlockVisitor const &) = delete;

protected:
    ~BlockVisitor() = default;

    void * visited() const noexcept { return slot_; }

    BlockHead * block() const noexcept { return block_; }

    /// Steps to another slot of the same block.
    void stepTo(void * slot) noexcept { slot_ = slot; }

    /// Enters a block. Requires that the visitor is in none.
    void enter(BlockHead * block, void * slot) noexcept {
        BlockGuard const guard(*block);
        link(block, slot);
    }

    /// Enters the block of `other` at the same entry. Requires that the visitor is in no
    /// block.
    void join(BlockVisitor const & other) noexcept {
        if (other.block_) {
            BlockGuard const guard(*other.block_);
            link(other.block_, other.slot_);
            ownsEntry_ = other.ownsEntry_;
        }
    }

    /// Leaves the block. Calls `destroy(slot)` if the entry was handed over to its
    /// visitors and this was the last of them, and `free(block)` if the block has no
    /// extent and no visitor left.
    template <class Destroy, class Free>
    void leave(Destroy && destroy, Free && free) noexcept {
        BlockHead * const block = block_;
        if (!block) {
            return;
        }
        if (!threadSafePtrSwitch.load(std::memory_order_relaxed) && !ownsEntry_) {
            unlink();
            return;
        }
        void * const slot = slot_;
        if (stepOff()) {
            destroy(slot);
        }
        if (leftNobody()) {
            free(block);
        }
    }

private:
    friend class BlockHead;

    void link(BlockHead * block, void * slot) noexcept {
        block_ = block;
        slot_ = slot;
        next_ = block->first_;
        if (next_) {
            next_->link_ = &next_;
        }
        link_ = &block->first_;
        block->first_ = this;
    }

    void unlink() noexcept {
        *link_ = next_;
        if (next_) {
            next_->link_ = link_;
        }
        block_ = nullptr;
        slot_ = nullptr;
    }

    /// Leaves the entry but stays in the block. True if the caller must destroy the
    /// entry.
    bool stepOff() noexcept;

    /// Leaves the block's list. True if the caller must free the block.
    bool leftNobody() noexcept;

    BlockHead * block_ = nullptr;
    void * slot_ = nullptr;
    BlockVisitor * next_ = nullptr;
    BlockVisitor ** link_ = nullptr;
    bool ownsEntry_ = false;
};

inline bool BlockHead::exclusive() const noexcept {
    BlockGuard const guard(*this);
    return owners_ == 1 && !first_;
}

inline bool BlockHead::disown() noexcept {
    BlockGuard const guard(*this);
    --owners_;
    return owners_ == 0 && !first_;
}

inline void BlockHead::own() noexcept {
    BlockGuard const guard(*this);
    ++owners_;
}

template <class Mark>
void BlockHead::forEachVisited(Mark && mark) const {
    BlockGuard const guard(*this);
    for (BlockVisitor const * visitor = first_; visitor; visitor = visitor->next_) {
        if (visitor->slot_ && !visitor->ownsEntry_) {
            mark(visitor->slot_);
        }
    }
}

template <class Mark>
void BlockHead::handOverToVisitors(void const * from, void const * to, Mark && mark) noexcept {
    BlockGuard const guard(*this);
    for (BlockVisitor * visitor = first_; visitor; visitor = visitor->next_) {
        if (!visitor->ownsEntry_ && visitor->slot_ >= from && visitor->slot_ < to) {
            visitor->ownsEntry_ = true;
            mark(visitor->slot_);
        }
    }
}

} // namespace Vex
