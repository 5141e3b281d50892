#include "outfmt/Interrupt.h"

namespace [[gnu::visibility("default")]] outfmt {

char const * SigIntException::what() const noexcept {
    return "on interrupt";
}

namespace detail {

std::atomic<bool> interruptFlag{false};
std::atomic<bool> takenFlag{false};

void throwInterrupt() {
    takenFlag.store(true, std::memory_order_relaxed);
    throw SigIntException();
}

} // namespace detail
} // namespace outfmt
