#include "vxshow/system/StandardStreams.h"

#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace vxshow::system {

bool openClosedStandardStreams() noexcept {
    for (int const number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(number, F_GETFD) >= 0) {
            continue;
        }
        // All lower numbers are open, so this is the one that the system gives. Standard output is
        // opened for reading and standard input for writing, so that using them fails.
        if (::open("/dev/null", number == STDOUT_FILENO ? O_RDONLY : O_WRONLY) != number) {
            return false;
        }
    }
    return true;
}

} // namespace vxshow::system
