#include "vxshow/terminal/Say.h"

#include "vxshow/system/DescriptorIo.h"

#include <algorithm>
#include <array>
#include <string>
#include <unistd.h>

namespace vxshow::terminal {

namespace {

constexpr std::string_view name = "vxshow: ";

/// Writes the line at once, so that lines of several processes do not mix.
void sayLine(std::string_view line) {
    // A short line needs no memory, which can have run out.
    std::array<char, 256> room;
    if (name.size() + line.size() + 1 <= room.size()) {
        auto * end = std::copy(name.begin(), name.end(), room.begin());
        end = std::copy(line.begin(), line.end(), end);
        *end++ = '\n';
        // If even that fails, there is nowhere to report it.
        static_cast<void>(system::writeAll(
            STDERR_FILENO, {room.data(), static_cast<std::size_t>(end - room.begin())}));
        return;
    }
    static_cast<void>(system::writeAll(STDERR_FILENO, std::string(name).append(line).append("\n")));
}

} // namespace

void say(std::string_view text) {
    for (;;) {
        auto const end = text.find('\n');
        sayLine(text.substr(0, end));
        if (end == std::string_view::npos) {
            return;
        }
        text.remove_prefix(end + 1);
    }
}

void fail(ExitStatus status, std::string_view text) {
    say(text);
    exitNow(status);
}

} // namespace vxshow::terminal
