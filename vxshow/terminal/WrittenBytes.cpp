#include "vxshow/terminal/WrittenBytes.h"

#include <fstream>
#include <string>

namespace vxshow::terminal {

namespace {

/// How many bytes this thread has passed to `write` and its like so far.
std::optional<std::uint64_t> writtenByThread() {
    std::ifstream file("/proc/thread-self/io");
    std::string name;
    std::uint64_t count = 0;
    while (file >> name >> count) {
        if (name == "wchar:") {
            return count;
        }
    }
    return std::nullopt;
}

} // namespace

WrittenBytes::WrittenBytes() : before_(writtenByThread()) {}

bool WrittenBytes::any() const {
    auto const now = writtenByThread();
    return !before_ || !now || *now > *before_;
}

} // namespace vxshow::terminal
