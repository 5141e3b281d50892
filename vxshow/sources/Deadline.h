#pragma once

#include <chrono>

namespace vxshow::sources {

/// When something has to be done by, and how long that was meant to take, for messages.
struct Deadline {
    using Clock = std::chrono::steady_clock;

    Clock::time_point end;
    std::chrono::milliseconds limit;

    static Deadline in(std::chrono::milliseconds limit) { return {Clock::now() + limit, limit}; }

    /// One that never comes.
    static Deadline never() { return {Clock::time_point::max(), {}}; }

    bool isOver() const { return Clock::now() >= end; }

    /// This one, or the one in `most` from now if that is sooner.
    Deadline within(std::chrono::milliseconds most) const {
        auto const sooner = in(most);
        return sooner.end < end ? sooner : *this;
    }
};

} // namespace vxshow::sources
