#include "vxshow/terminal/Say.h"

#include "vxshow/system/DescriptorIo.h"

#include <algorithm>
#include <array>
#include <string>
#include <unistd.h>

namespace vxshow::terminal {

namespace {

constexpr std::string_view name = "vxshow: ";

ColorChoice choice = ColorChoice::automatic;

/// Writes the line at once, so that lines of several processes do not mix.
void sayLine(std::string_view line, Kind kind) {
    bool const isColored = hasColor(choice, STDERR_FILENO);
    auto const begin = isColored ? colorOf(kind) : std::string_view();
    auto const end = isColored ? endOfColor : std::string_view();
    // A short line needs no memory, which can have run out.
    std::array<char, 256> room;
    std::array<std::string_view, 5> const parts{begin, name, line, end, "\n"};
    std::size_t size = 0;
    for (auto const part : parts) {
        size += part.size();
    }
    if (size <= room.size()) {
        auto * at = room.begin();
        for (auto const part : parts) {
            at = std::copy(part.begin(), part.end(), at);
        }
        // If even that fails, there is nowhere to report it.
        static_cast<void>(system::writeAll(STDERR_FILENO, {room.data(), size}));
        return;
    }
    std::string whole;
    whole.reserve(size);
    for (auto const part : parts) {
        whole.append(part);
    }
    static_cast<void>(system::writeAll(STDERR_FILENO, whole));
}

} // namespace

void colorMessages(ColorChoice chosen) noexcept {
    choice = chosen;
}

void say(std::string_view text, Kind kind) {
    for (;;) {
        auto const end = text.find('\n');
        sayLine(text.substr(0, end), kind);
        if (end == std::string_view::npos) {
            return;
        }
        text.remove_prefix(end + 1);
    }
}

void fail(ExitStatus status, std::string_view text) {
    say(text, Kind::error);
    exitNow(status);
}

} // namespace vxshow::terminal
