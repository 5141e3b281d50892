#pragma once

#include <cerrno>

namespace vxshow::system {

/// Makes a system call, which returns a negative number if it fails, until no signal interrupts it,
/// and returns what it returns then. Opening a file can wait as well: for the other end of a pipe,
/// or for a server.
template <class Call>
auto repeatInterrupted(Call && call) noexcept {
    for (;;) {
        auto const result = call();
        if (result >= 0 || errno != EINTR) {
            return result;
        }
    }
}

} // namespace vxshow::system
