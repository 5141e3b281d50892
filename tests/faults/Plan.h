#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace faults {

/// What happens to one system call.
struct Verdict {
    int error = 0;          ///< it fails with this error number; 0 if it does not fail
    unsigned long most = 0; ///< it is asked for at most that many bytes; 0 for all
};

/// Which calls of a run are disturbed, and how.
struct Plan {
    std::string call;             ///< the name of the calls that are counted; "" for none
    unsigned long number = 0;     ///< the call of that name that is disturbed, from 1; 0: every one
    Verdict verdict;              ///< what happens to it
    std::set<std::string> paused; ///< of each call with such a name, every other attempt is EINTR
    bool noUnnamedFiles = false;  ///< no file system has O_TMPFILE
};

/// Applies a plan to the calls of a run, in the order in which they start.
class Faults {
public:
    explicit Faults(Plan plan) : plan_(std::move(plan)) {}

    /// What happens to the next call. `thread` identifies the thread that makes it; `opensUnnamed`
    /// says whether it opens a file with O_TMPFILE.
    Verdict next(int thread, std::string const & call, bool opensUnnamed);

    /// How many calls were disturbed as the plan says. Those refused because there are no unnamed
    /// files do not count.
    unsigned long count() const noexcept { return count_; }

private:
    Plan plan_;
    unsigned long seen_ = 0;
    unsigned long count_ = 0;
    std::map<int, bool> pausedLast_; ///< by thread
};

} // namespace faults
