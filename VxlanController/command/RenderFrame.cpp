#include "VxlanController/command/RenderFrame.h"

#include <cstdio>

namespace VxlanController::Cli {

void announceInterrupt(outfmt::SigIntException const & interrupt) {
    std::printf("exiting %s\n", interrupt.what());
}

} // namespace VxlanController::Cli
