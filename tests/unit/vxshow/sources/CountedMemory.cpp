#include "tests/unit/vxshow/sources/CountedMemory.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<std::size_t> inUse{0};
std::atomic<std::size_t> most{0};

void * counted(void * memory) noexcept {
    if (memory) {
        auto const now = inUse += malloc_usable_size(memory);
        if (now > most) {
            most = now;
        }
    }
    return memory;
}

void * countedOrThrow(void * memory) {
    if (!counted(memory)) {
        throw std::bad_alloc();
    }
    return memory;
}

void release(void * memory) noexcept {
    inUse -= malloc_usable_size(memory);
    std::free(memory);
}

} // namespace

void * operator new(std::size_t size) {
    return countedOrThrow(std::malloc(size));
}

void * operator new(std::size_t size, std::nothrow_t const &) noexcept {
    return counted(std::malloc(size));
}

void operator delete(void * memory) noexcept {
    release(memory);
}

void operator delete(void * memory, std::size_t) noexcept {
    release(memory);
}

// Arrays are not counted: only the JSON parser has any, and it uses a part of them.

void * operator new[](std::size_t size) {
    if (void * const memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void * operator new[](std::size_t size, std::nothrow_t const &) noexcept {
    return std::malloc(size);
}

void operator delete[](void * memory) noexcept {
    std::free(memory);
}

void operator delete[](void * memory, std::size_t) noexcept {
    std::free(memory);
}

namespace vxshow::test {

PeakMemory::PeakMemory() noexcept : before_(inUse) {
    most = before_;
}

std::size_t PeakMemory::bytes() const noexcept {
    return most - before_;
}

} // namespace vxshow::test
