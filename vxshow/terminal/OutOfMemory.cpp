#include "vxshow/terminal/OutOfMemory.h"

#include "vxshow/system/Children.h"
#include "vxshow/system/Leftover.h"
#include "vxshow/terminal/Exit.h"

#include <atomic>
#include <new>
#include <unistd.h>

namespace vxshow::terminal {

namespace {

constinit std::atomic<bool> isEnding{false};

// Neither allocates nor runs a destructor or a handler of another part, which could.
void exitWithoutMemory() {
    constexpr char line[] = "vxshow: out of memory\n";
    if (isEnding.exchange(true)) {
        for (;;) {
            ::pause(); // until the thread that came first ends the process
        }
    }
    [[maybe_unused]] auto const written = ::write(STDERR_FILENO, line, sizeof(line) - 1);
    system::killAllChildren();
    system::removeLeftovers();
    ::_exit(static_cast<int>(ExitStatus::failed));
}

} // namespace

void exitOnOutOfMemory() noexcept {
    std::set_new_handler(exitWithoutMemory);
}

} // namespace vxshow::terminal
