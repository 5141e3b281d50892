#pragma once

#include "vxshow/sources/Deadline.h"

namespace vxshow::sources {

/// Looks at a deadline now and then while what a source has answered is read and joined. That may
/// take far longer than the answer did to come, and an answer may be made so that it does.
class DeadlineWatch {
public:
    explicit DeadlineWatch(Deadline const & deadline) noexcept : deadline_(deadline) {}

    /// To be called at each step of the work, such as a row or a fact that is made of several
    /// rows: a small part of the steps looks at the clock. Throws `TimedOut` when the time is.
    void step() {
        if (--left_ == 0) [[unlikely]] {
            look();
        }
    }

private:
    static constexpr unsigned stepsBetweenLooks = 4096;

    void look();

    Deadline deadline_;
    unsigned left_ = stepsBetweenLooks;
};

} // namespace vxshow::sources
