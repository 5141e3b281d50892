#include "vxshow/terminal/Say.h"

#include "vxshow/system/DescriptorIo.h"

#include <string>
#include <unistd.h>

namespace vxshow::terminal {

void say(std::string_view text) {
    for (;;) {
        auto const end = text.find('\n');
        auto const line = text.substr(0, end);
        // If even that fails, there is nowhere to report it.
        static_cast<void>(
            system::writeAll(STDERR_FILENO, std::string("vxshow: ").append(line).append("\n")));
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
