#pragma once

#include "vxshow/system/FileBytes.h"

#include <cstddef>
#include <span>

namespace vxshow::system {

/// A buffer for bytes whose number is not known in advance, such as those from a pipe. It becomes
/// a `FileBytes` without being copied.
class GrowingBytes {
public:
    /// Has room for up to `most` bytes and one more, by which too many are noticed. `most` is at
    /// most `FileBytes::longest`. `expected` is an estimate that saves growing. Raises
    /// `std::bad_alloc`.
    explicit GrowingBytes(std::size_t most, std::size_t expected = 0);

    /// The free part of the buffer, for the next bytes; not empty unless `isTooLong`. Invalidates
    /// what it returned before. Raises `std::bad_alloc`, which leaves the bytes intact.
    std::span<char> room();

    /// Adds the first `count` bytes of `room()`, which must have been filled.
    void add(std::size_t count) noexcept { size_ += count; }

    std::size_t size() const noexcept { return size_; }

    /// Whether more than `most` bytes were added.
    bool isTooLong() const noexcept { return size_ > most_; }

    /// All bytes. Nothing can be added afterwards.
    FileBytes take() noexcept;

private:
    void grow(std::size_t capacity);

    FileBytes::Buffer bytes_;
    std::size_t most_;
    std::size_t capacity_ = 0;
    std::size_t size_ = 0;
};

} // namespace vxshow::system
