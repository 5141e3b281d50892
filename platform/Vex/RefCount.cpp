#include "Vex/RefCount.h"

namespace [[gnu::visibility("default")]] Vex {

std::atomic<bool> threadSafePtrSwitch{false};

void threadSafePtrIs(bool on) noexcept {
    threadSafePtrSwitch.store(on);
}

bool threadSafePtr() noexcept {
    return threadSafePtrSwitch.load();
}

} // namespace Vex
