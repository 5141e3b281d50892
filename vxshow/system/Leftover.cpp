#include "vxshow/system/Leftover.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vxshow::system {

namespace {

constexpr std::size_t mostLeftovers = 8;
constinit std::array<std::atomic<char const *>, mostLeftovers> leftovers{};

static_assert(std::atomic<char const *>::is_always_lock_free);

/// Removes the files in a folder. `readdir` would allocate.
void removeFilesIn(char const * path) {
    constexpr std::size_t nameAt = offsetof(dirent64, d_name);
    constexpr std::size_t lengthAt = offsetof(dirent64, d_reclen);
    int const folder = ::open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    std::array<char, 4096> entries;
    for (;;) {
        auto const got = ::syscall(SYS_getdents64, folder, entries.data(), entries.size());
        if (got <= 0) {
            break;
        }
        for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
            unsigned short length = 0;
            std::memcpy(&length, entries.data() + at + lengthAt, sizeof(length));
            ::unlinkat(folder, entries.data() + at + nameAt, 0);
            at += length;
        }
    }
    ::close(folder);
}

} // namespace

void Leftover::remember(char const * path) noexcept {
    forget();
    for (auto & place : leftovers) {
        char const * expected = nullptr;
        if (place.compare_exchange_strong(expected, path)) {
            place_ = &place;
            return;
        }
    }
}

void Leftover::forget() noexcept {
    if (place_) {
        *place_ = nullptr;
        place_ = nullptr;
    }
}

void removeLeftovers() noexcept {
    for (auto const & place : leftovers) {
        char const * const path = place;
        if (path && ::unlink(path) != 0) {
            removeFilesIn(path);
            ::rmdir(path);
        }
    }
}

} // namespace vxshow::system
