#include "tests/unit/VxlanController/Rendered.h"

#include <array>
#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

OutputFile::OutputFile() : fd_(memfd_create("output", MFD_CLOEXEC)) {
    if (fd_ < 0) {
        throw std::runtime_error("memfd_create failed");
    }
}

OutputFile::~OutputFile() {
    close(fd_);
}

std::string OutputFile::content() const {
    std::string content;
    std::array<char, 65536> part;
    off_t at = 0;
    for (ssize_t got; (got = pread(fd_, part.data(), part.size(), at)) > 0; at += got) {
        content.append(part.data(), static_cast<std::size_t>(got));
    }
    return content;
}
