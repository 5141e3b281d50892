#include "Pelo/Mapping.h"

#include "Pelo/Errors.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace [[gnu::visibility("default")]] Pelo {

namespace {

constexpr mode_t readableByAll = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;

[[noreturn]] void throwSystemError(std::string_view table, std::string_view action, int error) {
    throw TableError(table, std::string("cannot be ")
                                .append(action)
                                .append(": ")
                                .append(std::generic_category().message(error)));
}

// Allocates the pages at once: a hole that the file system cannot fill later would end
// the writer with SIGBUS.
void reserve(int descriptor, U64 size, std::string_view table) {
    int error = 0;
    do {
        error = posix_fallocate(descriptor, 0, static_cast<off_t>(size));
    } while (error == EINTR);
    if (error != 0) {
        throwSystemError(table, "given " + std::to_string(size) + " bytes", error);
    }
}

} // namespace

Descriptor::~Descriptor() {
    if (number_ >= 0) {
        ::close(number_);
    }
}

Mapping::Mapping(int descriptor, std::size_t size, Access access, std::string_view table)
    : size_(size) {
    int const protection = access == Access::write ? PROT_READ | PROT_WRITE : PROT_READ;
    void * memory = ::mmap(nullptr, size, protection, MAP_SHARED, descriptor, 0);
    if (memory == MAP_FAILED) {
        throwSystemError(table, "mapped", errno);
    }
    words_ = static_cast<Word *>(memory);
}

Mapping::Mapping(std::size_t size, std::string_view table) : size_(size) {
    void * memory =
        ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throwSystemError(table, "given " + std::to_string(size) + " bytes", errno);
    }
    words_ = static_cast<Word *>(memory);
}

Mapping::~Mapping() {
    if (words_) {
        ::munmap(words_, size_);
    }
}

Descriptor openFile(std::string const & path) {
    // Without O_NONBLOCK, opening a pipe that has no writer would block.
    int number = -1;
    do {
        number = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    } while (number < 0 && errno == EINTR);
    Descriptor file(number);
    if (file.number() < 0) {
        throwSystemError(path, "opened", errno);
    }
    return file;
}

Descriptor duplicate(int descriptor, std::string_view table) {
    Descriptor copy(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
    if (copy.number() < 0) {
        throwSystemError(table, "opened", errno);
    }
    return copy;
}

U64 fileSize(int descriptor, std::string_view table) {
    struct stat status {};

    if (::fstat(descriptor, &status) != 0) {
        throwSystemError(table, "examined", errno);
    }
    if (!S_ISREG(status.st_mode)) {
        throw TableError(table, "is no regular file");
    }
    return static_cast<U64>(status.st_size);
}

void copyFile(int descriptor, U64 first, void * out, U64 size, std::string_view table) {
    auto * const bytes = static_cast<char *>(out);
    for (U64 done = 0; done < size;) {
        auto const got =
            ::pread(descriptor, bytes + done, size - done, static_cast<off_t>(first + done));
        if (got < 0 && errno != EINTR) {
            throwSystemError(table, "read", errno);
        }
        if (got == 0) {
            throwFileSize(table, first + done, first + size);
        }
        done += got > 0 ? static_cast<U64>(got) : 0;
    }
}

bool isStoredWhole(int descriptor) noexcept {
    auto const end = ::lseek(descriptor, 0, SEEK_END);
    auto const hole = ::lseek(descriptor, 0, SEEK_HOLE);
    return hole < 0 || hole >= end;
}

namespace {

// Creates a file with a name of its own beside `path`, and sets `temporary` to that name.
Descriptor makeBeside(std::string const & path, std::string & temporary) {
    int number = -1;
    do {
        temporary = path + ".XXXXXX";
        number = ::mkostemp(temporary.data(), O_CLOEXEC);
    } while (number < 0 && errno == EINTR);
    return Descriptor(number);
}

} // namespace

Descriptor makeMemory(std::string const & name, U64 size) {
    // The kernel accepts no longer names; this one is only for display.
    constexpr std::size_t longestName = 200;
    Descriptor memory(
        ::memfd_create(name.substr(0, longestName).c_str(), MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (memory.number() < 0) {
        throwSystemError(name, "made", errno);
    }
    reserve(memory.number(), size, name);
    if (::fcntl(memory.number(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) != 0) {
        throwSystemError(name, "sealed", errno);
    }
    return memory;
}

NewFile::NewFile(std::string path, U64 size)
    : path_(std::move(path)), descriptor_(makeBeside(path_, temporary_)) {
    if (descriptor_.number() < 0) {
        int const error = errno;
        temporary_.clear();
        throwSystemError(path_, "made", error);
    }
    try {
        if (::fchmod(descriptor_.number(), readableByAll) != 0) {
            throwSystemError(path_, "made readable", errno);
        }
        reserve(descriptor_.number(), size, path_);
    } catch (...) {
        ::unlink(temporary_.c_str());
        throw;
    }
}

NewFile::~NewFile() {
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

Descriptor NewFile::publish() {
    if (::rename(temporary_.c_str(), path_.c_str()) != 0) {
        throwSystemError(path_, "put in its place", errno);
    }
    temporary_.clear();
    return std::move(descriptor_);
}

} // namespace Pelo
