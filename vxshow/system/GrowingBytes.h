#pragma once

#include "vxshow/system/FileBytes.h"

#include <cstddef>
#include <span>

namespace vxshow::system {

/// Bytes whose number is known once they are all there, as those from a pipe. They are put
/// where they stay: what has grown becomes the `FileBytes` without being copied.
class GrowingBytes {
public:
    /// For up to `most` bytes, and for one more: it is by this one that too many are noticed.
    /// `most` is at most `FileBytes::longest`. `expected` is a guess at the number that spares
    /// the growing. Raises `std::bad_alloc`.
    explicit GrowingBytes(std::size_t most, std::size_t expected = 0);

    /// Where the next bytes go: some room, unless `isTooLong`. Raises `std::bad_alloc`, and
    /// then the bytes stay. What it has given before is invalid.
    std::span<char> room();

    /// The first `count` bytes of the room, which is not longer, hold bytes now.
    void add(std::size_t count) noexcept { size_ += count; }

    std::size_t size() const noexcept { return size_; }

    /// More than `most` have come.
    bool isTooLong() const noexcept { return size_ > most_; }

    /// All that have come. Nothing may be added later.
    FileBytes take() noexcept;

private:
    void grow(std::size_t capacity);

    FileBytes::Buffer bytes_;
    std::size_t most_;
    std::size_t capacity_ = 0;
    std::size_t size_ = 0;
};

} // namespace vxshow::system
