#pragma once

#include <chrono>
#include <string_view>

namespace vxshow::sources {

/// When something has to be done by, and how long that was meant to take, for messages.
struct Deadline {
    using Clock = std::chrono::steady_clock;

    Clock::time_point end;
    std::chrono::milliseconds limit;
    Clock::time_point (*now)() = &Clock::now; ///< the clock; tests have their own
    std::string_view setBy = {};              ///< the option or the key that says how long

    /// `setBy` is as the member: a constant.
    static Deadline in(std::chrono::milliseconds limit, std::string_view setBy = {}) {
        return {Clock::now() + limit, limit, &Clock::now, setBy};
    }

    /// One that never comes.
    static Deadline never() { return {Clock::time_point::max(), {}}; }

    bool isOver() const { return now() >= end; }

    /// This one, or the one in `most` from now, which `by` sets, if that is sooner.
    Deadline within(std::chrono::milliseconds most, std::string_view by = {}) const {
        Deadline const sooner{now() + most, most, now, by};
        return sooner.end < end ? sooner : *this;
    }
};

} // namespace vxshow::sources
