#pragma once

#include <unistd.h>
#include <utility>

namespace vxshow::system {

/// An open file descriptor, closed by the destructor. Holds none when its number is negative.
/// This is the one type under vxshow/ that owns a descriptor.
class OwnedDescriptor {
public:
    OwnedDescriptor() = default;

    /// Takes ownership of `number`.
    explicit OwnedDescriptor(int number) noexcept : number_(number) {}

    OwnedDescriptor(OwnedDescriptor && other) noexcept
        : number_(std::exchange(other.number_, -1)) {}

    OwnedDescriptor & operator=(OwnedDescriptor && other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    ~OwnedDescriptor() { close(); }

    int number() const noexcept { return number_; }

    bool isOpen() const noexcept { return number_ >= 0; }

    /// Closes it now; does nothing when it holds none.
    void close() noexcept {
        if (isOpen()) {
            ::close(std::exchange(number_, -1));
        }
    }

    /// Gives up ownership and returns the number; the descriptor stays open.
    int release() noexcept { return std::exchange(number_, -1); }

private:
    int number_ = -1;
};

} // namespace vxshow::system
