#pragma once

#include <cerrno>
#include <system_error>

namespace vxshow::system {

/// Raises `std::system_error` for the last failed call, as `errno` says.
[[noreturn]] inline void throwSystemError() {
    throw std::system_error(errno, std::generic_category());
}

} // namespace vxshow::system
