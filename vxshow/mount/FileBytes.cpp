#include "vxshow/mount/FileBytes.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vxshow {

namespace {

[[noreturn]] void throwErrno() {
    throw std::system_error(errno, std::generic_category());
}

[[noreturn]] void throwTooLong(std::string const & found) {
    throw std::length_error("found " + found + " bytes, expected at most " +
                            std::to_string(FileBytes::longest));
}

class Descriptor {
public:
    explicit Descriptor(int number) noexcept : number_(number) {}

    Descriptor(Descriptor const &) = delete;
    Descriptor & operator=(Descriptor const &) = delete;

    ~Descriptor() { ::close(number_); }

    int number() const noexcept { return number_; }

private:
    int number_;
};

/// What the file says of its length: 0 for a pipe, and for the files that a kernel makes up.
std::size_t announcedSize(int descriptor) {
    struct stat status {};

    if (::fstat(descriptor, &status) != 0) {
        throwErrno();
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
            throwErrno();
        }
    }
}

} // namespace

void FileBytes::grow(Buffer & bytes, std::size_t capacity) {
    auto * const larger = static_cast<char *>(std::realloc(bytes.get(), capacity + padding));
    if (!larger) {
        throw std::bad_alloc();
    }
    bytes.release();
    bytes.reset(larger);
}

FileBytes FileBytes::read(int descriptor) {
    constexpr std::size_t leastCapacity = 65536;
    // One byte more than announced: the read that finds the end needs room to read into.
    std::size_t capacity = std::max(announcedSize(descriptor) + 1, leastCapacity);
    Buffer bytes;
    grow(bytes, capacity);
    std::size_t size = 0;
    while (std::size_t const got = readSome(descriptor, bytes.get() + size, capacity - size)) {
        size += got;
        if (size > longest) {
            throwTooLong("more than " + std::to_string(longest));
        }
        if (size == capacity) {
            capacity = std::min(capacity * 2, longest + 1);
            grow(bytes, capacity);
        }
    }
    std::memset(bytes.get() + size, 0, padding);
    return {std::move(bytes), size};
}

FileBytes FileBytes::copyOf(std::string_view text) {
    if (text.size() > longest) {
        throwTooLong(std::to_string(text.size()));
    }
    Buffer bytes;
    grow(bytes, text.size());
    std::copy(text.begin(), text.end(), bytes.get());
    std::memset(bytes.get() + text.size(), 0, padding);
    return {std::move(bytes), text.size()};
}

FileBytes FileBytes::open(std::string const & path) {
    int const number = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (number < 0) {
        throwErrno();
    }
    Descriptor const file(number);
    return read(file.number());
}

} // namespace vxshow
