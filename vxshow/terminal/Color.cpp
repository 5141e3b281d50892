#include "vxshow/terminal/Color.h"

#include <cstdlib>
#include <unistd.h>

namespace vxshow::terminal {

bool hasColor(ColorChoice choice, int descriptor) noexcept {
    if (choice != ColorChoice::automatic) {
        return choice == ColorChoice::always;
    }
    char const * const refused = std::getenv("NO_COLOR");
    char const * const terminal = std::getenv("TERM");
    return (!refused || *refused == '\0') && terminal && *terminal != '\0' &&
           std::string_view(terminal) != "dumb" && ::isatty(descriptor) == 1;
}

// Readable on light and on dark ground alike.
std::string_view colorOf(Kind kind) noexcept {
    switch (kind) {
    case Kind::plain:
        break;
    case Kind::header:
    case Kind::total:
        return "\x1b[1m"; // bold
    case Kind::remark:
        return "\x1b[33m"; // yellow
    case Kind::error:
        return "\x1b[31m"; // red
    }
    return "";
}

std::string colored(std::string_view text, Kind kind) {
    auto const begin = text.empty() ? std::string_view() : colorOf(kind);
    std::string out(begin);
    out.append(text);
    return begin.empty() ? out : out.append(endOfColor);
}

} // namespace vxshow::terminal
