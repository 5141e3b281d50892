#pragma once

#include "Vex/Types.h"
#include "outfmt/Interrupt.h"

namespace VxlanController::Cli {

/// Looks for the user's interrupt from within a collection loop: once at the start, then
/// once every few thousand steps, so that the test costs nothing beside the step itself.
class InterruptPoll {
public:
    InterruptPoll() { outfmt::checkInterrupt(); }

    /// Raises `outfmt::SigIntException` when the user has asked for the end.
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
