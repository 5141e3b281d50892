#pragma once

#include "vxshow/sources/Deadline.h"

#include <cstddef>
#include <string_view>

namespace vxshow::sources {

/// Checks a deadline now and then while the answer of a source is read and joined, or the answers
/// of all are put together. That can take far longer than an answer took to arrive, and an answer
/// can be made so that it does.
class DeadlineWatch {
public:
    /// `missed` says in messages what has not been done in time; it is a literal.
    explicit DeadlineWatch(Deadline const & deadline,
                           std::string_view missed = "no answer") noexcept
        : deadline_(deadline), missed_(missed) {}

    /// To be called at each step of the work, such as a row, or a fact that is made of several
    /// rows. Few of the steps look at the clock. Throws `TimedOut` once the deadline is over.
    void step() {
        if (--left_ == 0) [[unlikely]] {
            look();
        }
    }

    /// As that many calls of `step`, for work that is done all at once.
    void steps(std::size_t count) {
        if (count >= left_) [[unlikely]] {
            look();
        } else {
            left_ -= static_cast<unsigned>(count);
        }
    }

    /// To be called before so many bytes are processed at once, and after that; 1 MiB counts as
    /// many steps as there are between two looks at the clock. Throws `TimedOut`.
    void bytes(std::size_t count) { steps(count / bytesOfStep); }

    /// To be called between steps that take long. Throws `TimedOut` if the deadline is over.
    void look();

private:
    static constexpr unsigned stepsBetweenLooks = 4096;
    static constexpr std::size_t bytesOfStep = 256;

    Deadline deadline_;
    std::string_view missed_;
    unsigned left_ = stepsBetweenLooks;
};

} // namespace vxshow::sources
