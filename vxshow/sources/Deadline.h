#pragma once

#include <chrono>

namespace vxshow::sources {

/// When something has to be done by, and how long that was meant to take, for messages.
struct Deadline {
    using Clock = std::chrono::steady_clock;

    Clock::time_point end;
    std::chrono::milliseconds limit;
    Clock::time_point (*now)() = &Clock::now; ///< the clock; tests have their own

    static Deadline in(std::chrono::milliseconds limit) { return {Clock::now() + limit, limit}; }

    /// One that never comes.
    static Deadline never() { return {Clock::time_point::max(), {}}; }

    bool isOver() const { return now() >= end; }

    /// This one, or the one in `most` from now if that is sooner.
    Deadline within(std::chrono::milliseconds most) const {
        Deadline const sooner{now() + most, most, now};
        return sooner.end < end ? sooner : *this;
    }
};

} // namespace vxshow::sources
