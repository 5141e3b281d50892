#pragma once

#include <atomic>
#include <cstddef>
#include <optional>
#include <sys/types.h>
#include <utility>

namespace vxshow::system {

/// A place in the list of the programs that run. The list is there for the moment in which all
/// of them have to be killed, which may be in a signal handler: it is an array of atomic
/// numbers and takes no lock.
///
/// A child enters itself, in the memory that it shares with this process until it becomes the
/// program. So it is listed before it can do any harm, or finds that it has come too late.
class ChildSlot {
public:
    /// So many programs run at once.
    static constexpr std::size_t count = 256;

    /// Takes a free one; nothing while there is none.
    static std::optional<ChildSlot> take() noexcept;

    /// Whether any is taken.
    static bool anyTaken() noexcept;

    /// Refuses all children from now on and kills those that are listed, with their groups.
    /// Async-signal-safe.
    static void killAll() noexcept;

    /// Whether `killAll` was called.
    static bool allKilled() noexcept;

    ChildSlot(ChildSlot && other) noexcept : place_(std::exchange(other.place_, nullptr)) {}

    ChildSlot & operator=(ChildSlot &&) = delete;

    /// Frees it. Its child has left.
    ~ChildSlot();

    /// For the child itself, as the leader of its group: lists it. False when it must not go on.
    bool enter(pid_t self) noexcept;

    /// Takes the child off the list, after which it may be reaped: on return nobody is about to
    /// send a signal to its number, which might soon be that of someone else.
    void leave() noexcept;

private:
    explicit ChildSlot(std::atomic<pid_t> & place) noexcept : place_(&place) {}

    std::atomic<pid_t> * place_;
};

/// Kills the child, which is not reaped yet, and its group. Async-signal-safe.
void killGroup(pid_t leader) noexcept;

} // namespace vxshow::system
