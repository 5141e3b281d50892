#pragma once

#include <unistd.h>
#include <utility>

namespace vxshow::system {

/// An open descriptor, closed at the end. One that is negative is none.
class OwnedDescriptor {
public:
    OwnedDescriptor() = default;

    /// Takes `number` over.
    explicit OwnedDescriptor(int number) noexcept : number_(number) {}

    OwnedDescriptor(OwnedDescriptor && other) noexcept
        : number_(std::exchange(other.number_, -1)) {}

    OwnedDescriptor & operator=(OwnedDescriptor && other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    ~OwnedDescriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }

    int number() const noexcept { return number_; }

    /// Gives it away, open.
    int release() noexcept { return std::exchange(number_, -1); }

private:
    int number_ = -1;
};

} // namespace vxshow::system
