#include "tests/faults/Plan.h"

#include <cerrno>

namespace faults {

Verdict Faults::next(int thread, std::string const & call, bool opensUnnamed) {
    if (opensUnnamed && plan_.noUnnamedFiles) {
        return {EOPNOTSUPP};
    }
    if (plan_.paused.contains(call)) {
        bool & paused = pausedLast_[thread];
        paused = !paused;
        count_ += paused;
        return {paused ? EINTR : 0};
    }
    if (call != plan_.call) {
        return {};
    }
    ++seen_;
    if (plan_.number != 0 && seen_ != plan_.number) {
        return {};
    }
    ++count_;
    return plan_.verdict;
}

} // namespace faults
