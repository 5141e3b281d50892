#include "vxshow/system/DescriptorIo.h"

#include <cerrno>
#include <unistd.h>

namespace vxshow::system {

ReadResult readSome(int descriptor, std::span<char> room) noexcept {
    for (;;) {
        auto const got = ::read(descriptor, room.data(), room.size());
        if (got >= 0) {
            return {static_cast<std::size_t>(got)};
        }
        if (errno != EINTR) {
            return {0, {errno, std::generic_category()}};
        }
    }
}

std::error_code writeAll(int descriptor, std::string_view text) noexcept {
    while (!text.empty()) {
        auto const written = ::write(descriptor, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            // Nothing written and no error: trying forever would help no one.
            return {written == 0 ? EIO : errno, std::generic_category()};
        }
    }
    return {};
}

} // namespace vxshow::system
