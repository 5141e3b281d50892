// Preloaded into a program, makes its allocations fail: FAULT_NUMBER is the one that fails, from 1,
// and FAULT_KIND is `once`, `on` (that one and all after it) or `count` (none). FAULT_REPORT is a
// file of at least eight bytes, whose first eight become the number of allocations made.
// The program does not find any of these in its environment, so its child processes are left alone.
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

extern "C" {
// The C library's own; its names cannot be looked up here, since looking up allocates.
void * __libc_malloc(std::size_t size);
void * __libc_calloc(std::size_t count, std::size_t size);
void * __libc_realloc(void * memory, std::size_t size);
void * __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

constinit bool isSettled = false;
constinit std::uint64_t failing = 0; ///< 0 for none
constinit bool failsFromThenOn = false;
constinit std::atomic<std::uint64_t> ownCount{0};
constinit std::atomic<std::uint64_t> * count = &ownCount;

void readSettings() {
    char const * const number = std::getenv("FAULT_NUMBER");
    char const * const kind = std::getenv("FAULT_KIND");
    char const * const report = std::getenv("FAULT_REPORT");
    if (!number || !kind || !report) {
        return;
    }
    failing = std::strcmp(kind, "count") == 0 ? 0 : std::strtoull(number, nullptr, 10);
    failsFromThenOn = std::strcmp(kind, "on") == 0;
    int const file = ::open(report, O_RDWR | O_CLOEXEC);
    void * const shared =
        ::mmap(nullptr, sizeof(*count), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (file < 0 || shared == MAP_FAILED) {
        ::_exit(127);
    }
    ::close(file);
    count = static_cast<std::atomic<std::uint64_t> *>(shared);
    for (char const * const name : {"LD_PRELOAD", "FAULT_NUMBER", "FAULT_KIND", "FAULT_REPORT"}) {
        ::unsetenv(name);
    }
}

/// The dynamic loader allocates before there is an environment to read the settings from. There is
/// only one thread then.
bool fails() {
    if (!isSettled) {
        if (!environ) {
            return false;
        }
        isSettled = true;
        readSettings();
    }
    auto const number = ++*count;
    return failing != 0 && (number == failing || (failsFromThenOn && number > failing));
}

template <class Allocate>
void * allocate(Allocate && allocateIt) {
    if (fails()) {
        errno = ENOMEM;
        return nullptr;
    }
    return allocateIt();
}

} // namespace

// The attribute, because the project hides what does not say otherwise.
extern "C" {

[[gnu::visibility("default")]] void * malloc(std::size_t size) {
    return allocate([&] { return __libc_malloc(size); });
}

[[gnu::visibility("default")]] void * calloc(std::size_t number, std::size_t size) {
    return allocate([&] { return __libc_calloc(number, size); });
}

[[gnu::visibility("default")]] void * realloc(void * memory, std::size_t size) {
    return allocate([&] { return __libc_realloc(memory, size); });
}

[[gnu::visibility("default")]] void * memalign(std::size_t alignment, std::size_t size) {
    return allocate([&] { return __libc_memalign(alignment, size); });
}

[[gnu::visibility("default")]] void * aligned_alloc(std::size_t alignment, std::size_t size) {
    return memalign(alignment, size);
}

[[gnu::visibility("default")]] int posix_memalign(void ** memory, std::size_t alignment,
                                                  std::size_t size) {
    void * const allocated = memalign(alignment, size);
    if (!allocated) {
        return ENOMEM;
    }
    *memory = allocated;
    return 0;
}

} // extern "C"
