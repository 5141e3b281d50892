#include "tests/unit/vxshow/system/TextFile.h"

#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

namespace vxshow::test {

TextFile::TextFile(std::string_view text) : descriptor_(::memfd_create("text", MFD_CLOEXEC)) {
    while (!text.empty()) {
        auto const written = ::write(descriptor_, text.data(), text.size());
        if (written <= 0) {
            throw std::runtime_error("cannot write a file in memory");
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    ::lseek(descriptor_, 0, SEEK_SET);
}

TextFile::~TextFile() {
    ::close(descriptor_);
}

std::string TextFile::path() const {
    return "/proc/self/fd/" + std::to_string(descriptor_);
}

} // namespace vxshow::test
