#include "vxshow/system/GrowingBytes.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace vxshow::system {

namespace {

constexpr std::size_t initialCapacity = 65536;

} // namespace

GrowingBytes::GrowingBytes(std::size_t most, std::size_t expected)
    : most_(std::min(most, FileBytes::longest)) {
    // The read that finds the end of the file needs room as well.
    grow(std::max(expected + 1, initialCapacity));
}

void GrowingBytes::grow(std::size_t capacity) {
    capacity = std::min(capacity, most_ + 1);
    auto * const larger =
        static_cast<char *>(std::realloc(bytes_.get(), capacity + FileBytes::padding));
    if (!larger) {
        throw std::bad_alloc();
    }
    static_cast<void>(bytes_.release());
    bytes_.reset(larger);
    capacity_ = capacity;
}

std::span<char> GrowingBytes::room() {
    if (size_ == capacity_ && !isTooLong()) {
        grow(capacity_ * 2);
    }
    return {bytes_.get() + size_, capacity_ - size_};
}

FileBytes GrowingBytes::take() noexcept {
    std::memset(bytes_.get() + size_, 0, FileBytes::padding);
    return {std::move(bytes_), size_};
}

} // namespace vxshow::system
