#include "outfmt/Interrupt.h"

namespace outfmt {

char const * SigIntException::what() const noexcept {
    return "on interrupt";
}

namespace detail {

std::atomic<bool> interruptFlag{false};

void throwInterrupt() {
    throw SigIntException();
}

} // namespace detail
} // namespace outfmt
