#include "Vex/BlockVisitors.h"

#include <thread>

namespace [[gnu::visibility("default")]] Vex {

void BlockGuard::lock() noexcept {
    // Held for a few instructions, so waiting is rare and short.
    while (busy_->exchange(true, std::memory_order_acquire)) {
        std::this_thread::yield();
    }
}

bool BlockVisitor::stepOff() noexcept {
    BlockGuard const guard(*block_);
    void const * const slot = slot_;
    slot_ = nullptr;
    if (!ownsEntry_) {
        return false;
    }
    for (BlockVisitor const * other = block_->first_; other; other = other->next_) {
        if (other->slot_ == slot) {
            return false;
        }
    }
    return true;
}

bool BlockVisitor::leftNobody() noexcept {
    BlockHead * const block = block_;
    BlockGuard const guard(*block);
    unlink();
    ownsEntry_ = false;
    return block->owners_ == 0 && !block->first_;
}

} // namespace Vex
