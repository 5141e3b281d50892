#pragma once

#include "vxshow/state/StateReader.h"

#include <chrono>
#include <string>

namespace vxshow::terminal {

/// One line on a terminal that tells how far the reading of a fabric is: drawn over itself, not
/// before half a second has gone by, and gone when the object goes.
class ProgressLine {
public:
    /// Writes to `descriptor`, and only when that is a terminal.
    explicit ProgressLine(int descriptor);
    ~ProgressLine();
    ProgressLine(ProgressLine const &) = delete;
    ProgressLine & operator=(ProgressLine const &) = delete;

    void show(state::Progress const & progress);

private:
    void write(std::string const & text) const;

    int descriptor_;
    bool terminal_;
    bool drawn_ = false;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// Reads the state, with a line of progress on standard error meanwhile. Raises `StateError`.
state::Reading readWithProgress(state::StateReader const & readState,
                                state::Selection const & selection);

} // namespace vxshow::terminal
