#pragma once

#include "vxshow/sources/Deadline.h"

namespace vxshow::sources {

/// Checks a deadline now and then while the answer of a source is read and joined. That can take
/// far longer than the answer took to arrive, and an answer can be made so that it does.
class DeadlineWatch {
public:
    explicit DeadlineWatch(Deadline const & deadline) noexcept : deadline_(deadline) {}

    /// To be called at each step of the work, such as a row, or a fact that is made of several
    /// rows. Few of the steps look at the clock. Throws `TimedOut` once the deadline is over.
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
