#pragma once

#include <atomic>
#include <exception>

/// The user's interrupt: one flag for the process.
///
/// A signal handler can do little more than set a flag, and a long listing spends its
/// time in loops that no signal can leave. So the handler sets the flag, and long-running
/// code tests it where it can throw an exception: the printer in each of its calls, a
/// collection loop every few thousand entries. The flag stays set until it is cleared, so
/// an interrupt between two tests is not lost.
namespace [[gnu::visibility("default")]] outfmt {

/// Raised when the interrupt flag is found set. Its text is "on interrupt".
class SigIntException : public std::exception {
public:
    char const * what() const noexcept override;
};

namespace detail {

extern std::atomic<bool> interruptFlag;
extern std::atomic<bool> takenFlag;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets the flag");

[[noreturn]] void throwInterrupt();

} // namespace detail

/// Sets the flag. Safe in a signal handler and from any thread. A handler should be
/// installed without SA_RESTART, so that a waiting write ends at once; with it, a wait
/// ends within 50 ms.
inline void requestInterrupt() noexcept {
    detail::interruptFlag.store(true, std::memory_order_relaxed);
}

/// Clears the flag: the next output starts uninterrupted.
inline void clearInterrupt() noexcept {
    detail::interruptFlag.store(false, std::memory_order_relaxed);
    detail::takenFlag.store(false, std::memory_order_relaxed);
}

/// Whether a SigIntException was raised since the flag was last cleared. An interrupt
/// that came too late to end anything is requested but not taken.
inline bool interruptTaken() noexcept {
    return detail::takenFlag.load(std::memory_order_relaxed);
}

/// Whether the flag is set. One relaxed load.
inline bool interruptRequested() noexcept {
    return detail::interruptFlag.load(std::memory_order_relaxed);
}

/// Throws SigIntException if the flag is set, and leaves it set.
inline void checkInterrupt() {
    if (interruptRequested()) [[unlikely]] {
        detail::throwInterrupt();
    }
}

} // namespace outfmt
