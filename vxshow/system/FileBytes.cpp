#include "vxshow/system/FileBytes.h"

#include "vxshow/system/DescriptorIo.h"
#include "vxshow/system/GrowingBytes.h"
#include "vxshow/system/OwnedDescriptor.h"
#include "vxshow/system/Repeat.h"
#include "vxshow/system/SystemError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <system_error>
#include <unistd.h>

namespace vxshow::system {

namespace {

[[noreturn]] void throwTooLong(std::string const & found, std::size_t most) {
    throw std::length_error("found " + found + " bytes, expected at most " + std::to_string(most));
}

/// Whether it is a device that can give bytes without an end.
bool isEndless(int descriptor, struct stat const & status) {
    bool const isNull = status.st_rdev == makedev(1, 3);
    return S_ISCHR(status.st_mode) && !isNull && ::isatty(descriptor) != 1;
}

/// The length that the system reports: 0 for a pipe and for the kernel's own files (/proc).
std::size_t announcedSize(int descriptor, std::size_t most) {
    struct stat status {};

    if (::fstat(descriptor, &status) != 0) {
        throwSystemError();
    }
    if (isEndless(descriptor, status)) {
        throw std::length_error("found a device that can have no end, expected a file, a pipe or a "
                                "terminal");
    }
    if (!S_ISREG(status.st_mode)) {
        return 0;
    }
    auto const size = static_cast<std::size_t>(status.st_size);
    if (size > most) {
        throwTooLong(std::to_string(size), most);
    }
    return size;
}

} // namespace

FileBytes FileBytes::read(int descriptor, std::size_t most) {
    GrowingBytes bytes(most, announcedSize(descriptor, most));
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
            throwTooLong("more than " + std::to_string(most), most);
        }
    }
}

FileBytes FileBytes::copyOf(std::string_view text) {
    if (text.size() > longest) {
        throwTooLong(std::to_string(text.size()), longest);
    }
    Buffer bytes(static_cast<char *>(std::malloc(text.size() + padding)));
    if (!bytes) {
        throw std::bad_alloc();
    }
    std::copy(text.begin(), text.end(), bytes.get());
    std::memset(bytes.get() + text.size(), 0, padding);
    return {std::move(bytes), text.size()};
}

FileBytes FileBytes::open(std::string const & path, std::size_t most) {
    OwnedDescriptor const file(
        repeatInterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC); }));
    if (!file.isOpen()) {
        throwSystemError();
    }
    return read(file.number(), most);
}

} // namespace vxshow::system
