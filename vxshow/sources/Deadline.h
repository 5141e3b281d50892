#pragma once

#include "vxshow/system/Run.h"

#include <chrono>

namespace vxshow::sources {

/// By when something has to be done, and how long that was meant to be, for messages.
struct Deadline {
    system::Clock::time_point end;
    std::chrono::milliseconds limit;

    static Deadline in(std::chrono::milliseconds limit) {
        return {system::Clock::now() + limit, limit};
    }

    /// One that is never over.
    static Deadline never() { return {system::Clock::time_point::max(), {}}; }

    bool isOver() const { return system::Clock::now() >= end; }

    /// This one, or the one in `most` from now when that is sooner.
    Deadline within(std::chrono::milliseconds most) const {
        auto const sooner = in(most);
        return sooner.end < end ? sooner : *this;
    }
};

} // namespace vxshow::sources
