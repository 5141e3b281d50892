#include "vxshow/terminal/Say.h"

#include <cstdio>

namespace vxshow::terminal {

void say(std::string_view text) {
    for (;;) {
        auto const end = text.find('\n');
        auto const line = text.substr(0, end);
        std::fprintf(stderr, "vxshow: %.*s\n", static_cast<int>(line.size()), line.data());
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
