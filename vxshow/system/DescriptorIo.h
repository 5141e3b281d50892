#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <system_error>

/// Reading from and writing to descriptors. A call that a signal interrupts is repeated.
namespace vxshow::system {

struct ReadResult {
    std::size_t bytes = 0; ///< how many were read; 0 at the end of the file, and on an error
    std::error_code error = {};
};

/// Reads once into `room`, which can be filled in part.
ReadResult readSome(int descriptor, std::span<char> room) noexcept;

/// Writes all of `text`, in several calls if need be. On an error, which is returned, part of it
/// may have been written.
[[nodiscard]] std::error_code writeAll(int descriptor, std::string_view text) noexcept;

} // namespace vxshow::system
