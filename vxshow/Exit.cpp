#include "vxshow/Exit.h"

#include <cstdio>
#include <cstdlib>

namespace vxshow {

void exitNow(ExitStatus status) {
    std::fflush(stdout);
    std::_Exit(static_cast<int>(status));
}

} // namespace vxshow
