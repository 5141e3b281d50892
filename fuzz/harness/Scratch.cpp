#include "fuzz/harness/Scratch.h"

#include "fuzz/harness/Check.h"

#include <stdexcept>
#include <sys/mman.h>
#include <unistd.h>

namespace fuzz {

Scratch::Scratch() : descriptor_(::memfd_create("fuzz", MFD_CLOEXEC)) {
    if (descriptor_ < 0) {
        throw std::runtime_error("memfd_create failed");
    }
}

Scratch::~Scratch() {
    ::close(descriptor_);
}

std::string Scratch::path() const {
    return "/proc/self/fd/" + std::to_string(descriptor_);
}

void Scratch::clear() {
    check(::ftruncate(descriptor_, 0) == 0 && ::lseek(descriptor_, 0, SEEK_SET) == 0,
          "the unnamed file cannot be emptied");
}

void Scratch::fill(std::string_view bytes) {
    clear();
    check(::pwrite(descriptor_, bytes.data(), bytes.size(), 0) ==
              static_cast<ssize_t>(bytes.size()),
          "the unnamed file cannot be written");
}

std::string Scratch::content() const {
    auto const size = ::lseek(descriptor_, 0, SEEK_END);
    std::string bytes(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    check(::pread(descriptor_, bytes.data(), bytes.size(), 0) == size,
          "the unnamed file cannot be read");
    return bytes;
}

} // namespace fuzz
