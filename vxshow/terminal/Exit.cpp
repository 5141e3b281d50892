#include "vxshow/terminal/Exit.h"

#include "vxshow/system/Children.h"

#include <cstdio>
#include <cstdlib>

namespace vxshow::terminal {

void exitNow(ExitStatus status) {
    // First, because flushing can block on a reader that takes no more output.
    system::killAllChildren();
    std::fflush(stdout);
    std::_Exit(static_cast<int>(status));
}

} // namespace vxshow::terminal
