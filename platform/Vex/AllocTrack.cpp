#include "Vex/AllocTrack.h"

#include "Vex/RefCount.h"

#include <new>

namespace [[gnu::visibility("default")]] Vex {

namespace {

// Constant-initialised, so that records of other libraries can add themselves in whatever
// order the libraries are loaded.
std::atomic<AllocTrackTypeInfo *> firstType{nullptr};
std::atomic<AllocTrackWatcher *> theWatcher{nullptr};

void add(std::atomic<U64> & counter, U64 amount) noexcept {
    if (threadSafePtrSwitch.load(std::memory_order_relaxed)) {
        counter.fetch_add(amount, std::memory_order_relaxed);
    } else {
        counter.store(counter.load(std::memory_order_relaxed) + amount, std::memory_order_relaxed);
    }
}

} // namespace

AllocTrackTypeInfo::AllocTrackTypeInfo(char const * name, std::type_info const & type) noexcept
    : name_(name), type_(type) {
    next_ = firstType.load();
    while (!firstType.compare_exchange_weak(next_, this)) {
    }
}

void AllocTrackTypeInfo::count(U64 objects, U64 bytes) noexcept {
    add(liveCount_, objects);
    add(liveBytes_, bytes);
}

void * allocTrackAllocate(AllocTrackTypeInfo & type, std::size_t size) noexcept {
    type.count(1, size);
    if (auto * watcher = theWatcher.load(std::memory_order_relaxed)) {
        watcher->allocated(type, size);
    }
    return ::operator new(size);
}

void allocTrackRelease(AllocTrackTypeInfo & type, void * memory, std::size_t size) noexcept {
    type.count(~U64{0}, ~U64{size} + 1);
    if (auto * watcher = theWatcher.load(std::memory_order_relaxed)) {
        watcher->released(type, size);
    }
    ::operator delete(memory);
}

void allocTrackForEach(std::function<void(AllocTrackTypeInfo const &)> const & visit) {
    for (auto const * type = firstType.load(); type; type = type->next_) {
        visit(*type);
    }
}

U64 allocTrackLiveCount(std::string_view prefix) {
    U64 live = 0;
    allocTrackForEach([&](AllocTrackTypeInfo const & type) {
        if (std::string_view(type.name()).starts_with(prefix)) {
            live += type.liveCount();
        }
    });
    return live;
}

void allocTrackWatcherIs(AllocTrackWatcher * watcher) noexcept {
    theWatcher.store(watcher);
}

} // namespace Vex
