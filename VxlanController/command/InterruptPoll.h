#pragma once

#include "Vex/Types.h"
#include "outfmt/Interrupt.h"

namespace VxlanController::Cli {

/// Checks for the user's interrupt within a collection loop: once at the start, then once
/// every few thousand steps, so that the check costs next to nothing per step.
class InterruptPoll {
public:
    InterruptPoll() { outfmt::checkInterrupt(); }

    /// Raises `outfmt::SigIntException` if the user has interrupted the command.
    void step() {
        if (++steps_ % interval == 0) {
            outfmt::checkInterrupt();
        }
    }

private:
    static constexpr Vex::U32 interval = 4096;

    Vex::U32 steps_ = 0;
};

} // namespace VxlanController::Cli
