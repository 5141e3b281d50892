#pragma once

#include "Vex/Types.h"

#include <atomic>

namespace [[gnu::visibility("default")]] Vex {

/// Whether reference counts and allocation counts are changed atomically.
///
/// The switch is process-wide and off at start: a command runs on one thread, and plain
/// increments are several times cheaper. A front end that fills state on several threads
/// turns it on before the first of them starts and leaves it on until the last has ended.
void threadSafePtrIs(bool on) noexcept;

/// The current state of the switch.
bool threadSafePtr() noexcept;

/// The storage of the switch, declared here only so that tests of it can be inlined.
extern std::atomic<bool> threadSafePtrSwitch;

/// A counter that obeys the thread-safe switch. Neither copied nor moved, since a count
/// belongs to one object.
class RefCount {
public:
    constexpr RefCount() = default;
    RefCount(RefCount const &) = delete;
    RefCount & operator=(RefCount const &) = delete;

    /// Adds one.
    void up() const noexcept {
        if (threadSafePtrSwitch.load(std::memory_order_relaxed)) {
            count_.fetch_add(1, std::memory_order_relaxed);
        } else {
            count_.store(count_.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
        }
    }

    /// Subtracts one; true if none is left, that is, if the caller was the last holder.
    [[nodiscard]] bool down() const noexcept {
        if (threadSafePtrSwitch.load(std::memory_order_relaxed)) {
            return count_.fetch_sub(1, std::memory_order_acq_rel) == 1;
        }
        U32 const left = count_.load(std::memory_order_relaxed) - 1;
        count_.store(left, std::memory_order_relaxed);
        return left == 0;
    }

    /// The current count.
    U32 value() const noexcept { return count_.load(std::memory_order_relaxed); }

private:
    mutable std::atomic<U32> count_{0};
};

} // namespace Vex
