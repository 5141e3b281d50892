#pragma once

#include <atomic>
#include <cstddef>
#include <optional>
#include <sys/types.h>
#include <utility>

namespace vxshow::system {

/// A place in the list of running programs. The list serves to kill all of them, which can happen
/// in a signal handler: it is an array of atomic numbers and needs no lock.
///
/// A child enters itself, in the memory that it shares with this process until it executes the
/// program. So it is either listed before the program starts, or learns that it must not start.
class ChildSlot {
public:
    /// The number of programs that can run at the same time.
    static constexpr std::size_t count = 256;

    /// Takes a free slot; nullopt if there is none.
    static std::optional<ChildSlot> take() noexcept;

    /// Whether any slot is taken.
    static bool anyTaken() noexcept;

    /// Refuses all children from now on, and kills the listed ones with their process groups.
    /// Async-signal-safe.
    static void killAll() noexcept;

    /// Whether `killAll` was called.
    static bool allKilled() noexcept;

    ChildSlot(ChildSlot && other) noexcept : place_(std::exchange(other.place_, nullptr)) {}

    ChildSlot & operator=(ChildSlot &&) = delete;

    /// Frees the slot. Its child must have left.
    ~ChildSlot();

    /// Called by the child itself, the leader of its process group: lists it. Returns false if it
    /// must not go on.
    bool enter(pid_t self) noexcept;

    /// Removes the child from the list, after which it can be reaped: on return, no `killAll` is
    /// about to send a signal to its number, which another process can soon have.
    void leave() noexcept;

private:
    explicit ChildSlot(std::atomic<pid_t> & place) noexcept : place_(&place) {}

    std::atomic<pid_t> * place_;
};

/// Kills a child that is not reaped yet, and its process group. Async-signal-safe.
void killGroup(pid_t leader) noexcept;

} // namespace vxshow::system
