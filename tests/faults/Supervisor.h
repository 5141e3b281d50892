#pragma once

#include "tests/faults/Plan.h"

#include <string>
#include <vector>

namespace faults {

/// One system call of a run.
struct Call {
    std::string name;
    int first = 0; ///< its first argument, often a descriptor
};

/// How a run went.
struct Ending {
    enum class Kind { exited, killed, hung, notStarted };

    Kind kind = Kind::notStarted;
    int number = 0;                     ///< exit status, or the signal that killed it
    unsigned long disturbed = 0;        ///< how many calls were disturbed
    int first = -1;                     ///< the first argument of the last call disturbed
    std::vector<Call> calls;            ///< from the entry point of the program on, in order
    std::vector<std::string> survivors; ///< the command lines of processes it left running
};

/// Runs a program and disturbs its system calls as `plan` says: those of all its threads, from its
/// entry point on, and those that its child processes make before they execute another program.
/// What the dynamic loader does before is not counted.
///
/// A program that still runs after `seconds` is killed, and so are the processes that it left. To
/// see those, this process becomes their reaper, so it can have no other children. `variables`
/// are added to the environment of the program: "NAME=VALUE".
Ending supervise(std::vector<std::string> const & words, std::vector<std::string> const & variables,
                 Plan const & plan, unsigned seconds);

} // namespace faults
