#pragma once

#include "vxshow/state/StateReader.h"

#include <chrono>
#include <string>

namespace vxshow::terminal {

/// One line on a terminal that shows the progress of reading a fabric. It appears after half a
/// second, is redrawn in place, and is erased by the destructor.
class ProgressLine {
public:
    /// Writes to `descriptor`, but only if that is a terminal.
    explicit ProgressLine(int descriptor);
    ~ProgressLine();
    ProgressLine(ProgressLine const &) = delete;
    ProgressLine & operator=(ProgressLine const &) = delete;

    void show(state::Progress const & progress);

private:
    void draw(std::string const & text) const;

    int descriptor_;
    bool terminal_;
    bool drawn_ = false;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// Reads the state, with a line of progress on standard error meanwhile. Raises `StateError`.
state::Reading readWithProgress(state::StateReader const & readState,
                                state::Selection const & selection);

} // namespace vxshow::terminal
