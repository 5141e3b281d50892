#pragma once

#include "Vex/RefCount.h"
#include "Vex/Types.h"

#include <atomic>

/// Who stands in a block of an ordered collection.
///
/// An entry must stay where it is for as long as an iterator shows it, and only that entry:
/// its neighbours move and go as the collection wishes. A count on the block would not tell
/// which entry is meant, and a count on every entry would be touched at each step of a walk.
/// So an iterator enters itself in its block's list when it comes and leaves the list when it
/// goes; within the block it steps as if it were alone. The collection reads the list when it
/// is about to change the block, which is rare while somebody walks.
namespace [[gnu::visibility("default")]] Vex {

class BlockVisitor;

/// Which slots of a block hold entries: from `begin` up to, but without, `end`.
struct BlockExtent {
    U16 begin = 0;
    U16 end = 0;

    U16 size() const noexcept { return static_cast<U16>(end - begin); }
};

/// What every block starts with. The slots stand behind it and are its owner's affair.
class BlockHead {
public:
    explicit BlockHead(U16 slots) noexcept : capacity(slots) {}

    BlockHead(BlockHead const &) = delete;
    BlockHead & operator=(BlockHead const &) = delete;

    /// Whether one extent has the block to itself and nobody stands in it, so that its
    /// entries may be moved.
    bool exclusive() const noexcept;

    /// One extent of the collection more.
    void own() noexcept;

    /// One extent of the collection less. True when nobody is left: the caller frees it.
    [[nodiscard]] bool disown() noexcept;

    /// Calls `mark` with every slot of the block on which somebody stands.
    template <class Mark>
    void forEachVisited(Mark && mark) const;

    /// Leaves the entries in the slots from `from` up to `to` to those who stand on them, and
    /// calls `mark` with the slot of each of these. The last one destroys the entry.
    template <class Mark>
    void leaveToVisitors(void const * from, void const * to, Mark && mark) noexcept;

    /// The slots in use, while the block is the collection's only one.
    BlockExtent extent;
    U16 const capacity;

private:
    friend class BlockVisitor;
    friend class BlockGuard;

    /// How many extents of the collection lie in the block.
    U8 owners_ = 1;
    mutable std::atomic<bool> busy_{false};
    BlockVisitor * first_ = nullptr;
};

/// Keeps a block's list to one thread while it lives, when the thread-safe switch is on.
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

/// One who stands on an entry. Neither copied nor moved as such: the block points to it.
class BlockVisitor {
public:
    BlockVisitor() = default;
    BlockVisitor(BlockVisitor const &) = delete;
    BlockVisitor & operator=(BlockVisitor const &) = delete;

protected:
    ~BlockVisitor() = default;

    void * visited() const noexcept { return slot_; }

    BlockHead * block() const noexcept { return block_; }

    /// Goes on to another slot of the same block.
    void stepTo(void * slot) noexcept { slot_ = slot; }

    /// Enters a block, standing in none.
    void enter(BlockHead * block, void * slot) noexcept {
        BlockGuard const guard(*block);
        link(block, slot);
    }

    /// Stands where `other` does, standing in no block yet.
    void join(BlockVisitor const & other) noexcept {
        if (other.block_) {
            BlockGuard const guard(*other.block_);
            link(other.block_, other.slot_);
            leftToUs_ = other.leftToUs_;
        }
    }

    /// Leaves the block. `destroy(slot)` is called when the entry was left to its visitors
    /// and this was the last of them, `free(block)` when the block has become nobody's.
    template <class Destroy, class Free>
    void leave(Destroy && destroy, Free && free) noexcept {
        BlockHead * const block = block_;
        if (!block) {
            return;
        }
        if (!threadSafePtrSwitch.load(std::memory_order_relaxed) && !leftToUs_) {
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

    /// Steps off the entry, keeping the block still; whether the entry dies of it.
    bool stepOff() noexcept;

    /// Leaves the list; whether the block is nobody's now.
    bool leftNobody() noexcept;

    BlockHead * block_ = nullptr;
    void * slot_ = nullptr;
    BlockVisitor * next_ = nullptr;
    BlockVisitor ** link_ = nullptr;
    bool leftToUs_ = false;
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
        if (visitor->slot_ && !visitor->leftToUs_) {
            mark(visitor->slot_);
        }
    }
}

template <class Mark>
void BlockHead::leaveToVisitors(void const * from, void const * to, Mark && mark) noexcept {
    BlockGuard const guard(*this);
    for (BlockVisitor * visitor = first_; visitor; visitor = visitor->next_) {
        if (!visitor->leftToUs_ && visitor->slot_ >= from && visitor->slot_ < to) {
            visitor->leftToUs_ = true;
            mark(visitor->slot_);
        }
    }
}

} // namespace Vex
