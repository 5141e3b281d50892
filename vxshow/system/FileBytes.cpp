#include "vxshow/system/FileBytes.h"

#include "vxshow/system/GrowingBytes.h"
#include "vxshow/system/OwnedDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vxshow::system {

namespace {

[[noreturn]] void throwReadError() {
    throw std::system_error(errno, std::generic_category());
}

[[noreturn]] void throwTooLong(std::string const & found) {
    throw std::length_error("found " + found + " bytes, expected at most " +
                            std::to_string(FileBytes::longest));
}

/// What the file says of its length: 0 for a pipe, and for the files that a kernel makes up.
std::size_t announcedSize(int descriptor) {
    struct stat status {};

    if (::fstat(descriptor, &status) != 0) {
        throwReadError();
    }
    if (!S_ISREG(status.st_mode)) {
        return 0;
    }
    auto const size = static_cast<std::size_t>(status.st_size);
    if (size > FileBytes::longest) {
        throwTooLong(std::to_string(size));
    }
    return size;
}

std::size_t readSome(int descriptor, char * to, std::size_t room) {
    for (;;) {
        auto const got = ::read(descriptor, to, room);
        if (got >= 0) {
            return static_cast<std::size_t>(got);
        }
        if (errno != EINTR) {
            throwReadError();
        }
    }
}

} // namespace

FileBytes FileBytes::read(int descriptor) {
    GrowingBytes bytes(longest, announcedSize(descriptor));
    for (;;) {
        auto const room = bytes.room();
        std::size_t const got = readSome(descriptor, room.data(), room.size());
        if (got == 0) {
            return bytes.take();
        }
        bytes.add(got);
        if (bytes.isTooLong()) {
            throwTooLong("more than " + std::to_string(longest));
        }
    }
}

FileBytes FileBytes::copyOf(std::string_view text) {
    if (text.size() > longest) {
        throwTooLong(std::to_string(text.size()));
    }
    Buffer bytes(static_cast<char *>(std::malloc(text.size() + padding)));
    if (!bytes) {
        throw std::bad_alloc();
    }
    std::copy(text.begin(), text.end(), bytes.get());
    std::memset(bytes.get() + text.size(), 0, padding);
    return {std::move(bytes), text.size()};
}

FileBytes FileBytes::open(std::string const & path) {
    int const number = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (number < 0) {
        throwReadError();
    }
    OwnedDescriptor const file(number);
    return read(file.number());
}

} // namespace vxshow::system
