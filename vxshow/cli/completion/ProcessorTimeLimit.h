#pragma once

#include <chrono>

namespace vxshow::cli::completion {

/// Ends the process with exit status 0, and without output of its own, when it has used so much
/// processor time since the constructor. The destructor lifts the limit. Takes the signal SIGPROF;
/// only one at a time. Time that others use, as on a busy machine, does not count.
class ProcessorTimeLimit {
public:
    explicit ProcessorTimeLimit(std::chrono::milliseconds time);
    ~ProcessorTimeLimit();
    ProcessorTimeLimit(ProcessorTimeLimit const &) = delete;
    ProcessorTimeLimit & operator=(ProcessorTimeLimit const &) = delete;
};

} // namespace vxshow::cli::completion
