#include "vxshow/terminal/Exit.h"

#include "vxshow/system/Children.h"

#include <cstdio>
#include <cstdlib>

namespace vxshow::terminal {

void exitNow(ExitStatus status) {
    // First, for a reader who takes nothing may hold up what comes next.
    system::killAllChildren();
    std::fflush(stdout);
    std::_Exit(static_cast<int>(status));
}

} // namespace vxshow::terminal
