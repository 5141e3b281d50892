#include "vxshow/Exit.h"

#include <cstdio>
#include <cstdlib>
#include <poll.h>
#include <unistd.h>

namespace vxshow {

bool canWriteAtOnce(int fd) noexcept {
    pollfd request{fd, POLLOUT, 0};
    return poll(&request, 1, 0) == 1 && (request.revents & POLLOUT) != 0;
}

void exitNow(ExitStatus status) {
    if (status != ExitStatus::interrupted || canWriteAtOnce(STDOUT_FILENO)) {
        std::fflush(stdout);
    }
    std::_Exit(static_cast<int>(status));
}

} // namespace vxshow
