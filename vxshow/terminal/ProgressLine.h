#pragma once

#include "vxshow/sources/fabric/AskAll.h"
#include "vxshow/system/Run.h"

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

    void show(sources::fabric::Progress const & progress);

private:
    void write(std::string const & text) const;

    int descriptor_;
    bool terminal_;
    bool drawn_ = false;
    system::Clock::time_point start_ = system::Clock::now();
};

} // namespace vxshow::terminal
