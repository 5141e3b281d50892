#include "vxshow/system/ChildSlot.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <sched.h>

namespace vxshow::system {

namespace {

constexpr pid_t isFree = 0;
constexpr pid_t isTaken = -1; // but no child is listed in it

// All accesses are sequentially consistent. Two guarantees rest on that: when a child enters
// during a `killAll`, at least one of the two sees the other; and a child that leaves waits for
// a `killAll` that is about to kill it.
constinit std::array<std::atomic<pid_t>, ChildSlot::count> places{};
constinit std::atomic<bool> refused{false};
constinit std::atomic<int> killers{0};

static_assert(std::atomic<pid_t>::is_always_lock_free);
static_assert(std::atomic<bool>::is_always_lock_free);

} // namespace

// Also the child alone: it can have joined another group.
void killGroup(pid_t leader) noexcept {
    ::kill(-leader, SIGKILL);
    ::kill(leader, SIGKILL);
}

std::optional<ChildSlot> ChildSlot::take() noexcept {
    for (auto & place : places) {
        pid_t expected = isFree;
        if (place.compare_exchange_strong(expected, isTaken)) {
            return ChildSlot(place);
        }
    }
    return std::nullopt;
}

bool ChildSlot::anyTaken() noexcept {
    return std::any_of(places.begin(), places.end(),
                       [](auto const & place) { return place != isFree; });
}

void ChildSlot::killAll() noexcept {
    int const before = errno;
    refused = true;
    ++killers;
    for (auto const & place : places) {
        if (pid_t const leader = place; leader > 0) {
            killGroup(leader);
        }
    }
    --killers;
    errno = before;
}

bool ChildSlot::allKilled() noexcept {
    return refused;
}

ChildSlot::~ChildSlot() {
    if (place_) {
        *place_ = isFree;
    }
}

bool ChildSlot::enter(pid_t self) noexcept {
    *place_ = self;
    return !refused;
}

void ChildSlot::leave() noexcept {
    *place_ = isTaken;
    while (killers != 0) {
        sched_yield();
    }
}

} // namespace vxshow::system
