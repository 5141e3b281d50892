#include "vxshow/system/FileBytes.h"

#include "vxshow/system/DescriptorIo.h"
#include "vxshow/system/GrowingBytes.h"
#include "vxshow/system/OwnedDescriptor.h"
#include "vxshow/system/SystemError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>

namespace vxshow::system {

namespace {

[[noreturn]] void throwTooLong(std::string const & found) {
    throw std::length_error("found " + found + " bytes, expected at most " +
                            std::to_string(FileBytes::longest));
}

/// The length that the system reports: 0 for a pipe and for the kernel's own files (/proc).
std::size_t announcedSize(int descriptor) {
    struct stat status {};

    if (::fstat(descriptor, &status) != 0) {
        throwSystemError();
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

} // namespace

FileBytes FileBytes::read(int descriptor) {
    GrowingBytes bytes(longest, announcedSize(descriptor));
    for (;;) {
        auto const [got, error] = readSome(descriptor, bytes.room());
        if (error) {
            throw std::system_error(error);
        }
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
    OwnedDescriptor const file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.isOpen()) {
        throwSystemError();
    }
    return read(file.number());
}

} // namespace vxshow::system
