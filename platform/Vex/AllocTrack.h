#pragma once

#include "Vex/Types.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <string_view>
#include <typeinfo>

namespace [[gnu::visibility("default")]] Vex {

/// What the tracker knows of one entity type. Each type has one such record with static
/// life (`vexAllocTrackTypeInfo_`), which enters itself in the tracker's list when the
/// library that holds it is loaded.
class AllocTrackTypeInfo {
public:
    AllocTrackTypeInfo(char const * name, std::type_info const & type) noexcept;
    AllocTrackTypeInfo(AllocTrackTypeInfo const &) = delete;
    AllocTrackTypeInfo & operator=(AllocTrackTypeInfo const &) = delete;

    /// The type's full name, "VxlanController::Cli::VniStatus" for example.
    char const * name() const noexcept { return name_; }

    /// The type's run-time type.
    std::type_info const & type() const noexcept { return type_; }

    /// Objects of exactly this type that are alive.
    U64 liveCount() const noexcept { return liveCount_.load(std::memory_order_relaxed); }

    /// Bytes that those objects take, without what they own beyond themselves.
    U64 liveBytes() const noexcept { return liveBytes_.load(std::memory_order_relaxed); }

private:
    friend void * allocTrackAllocate(AllocTrackTypeInfo &, std::size_t) noexcept;
    friend void allocTrackRelease(AllocTrackTypeInfo &, void *, std::size_t) noexcept;
    friend void allocTrackForEach(std::function<void(AllocTrackTypeInfo const &)> const &);

    void count(U64 objects, U64 bytes) noexcept;

    char const * name_;
    std::type_info const & type_;
    std::atomic<U64> liveCount_{0};
    std::atomic<U64> liveBytes_{0};
    AllocTrackTypeInfo * next_ = nullptr;
};

/// Reports an object of `size` bytes to the tracker, then takes the memory for it. Ends
/// the process when there is none: a command without memory has nothing left to say.
void * allocTrackAllocate(AllocTrackTypeInfo & type, std::size_t size) noexcept;

/// Reports the end of an object to the tracker, then gives its memory back.
void allocTrackRelease(AllocTrackTypeInfo & type, void * memory, std::size_t size) noexcept;

/// Calls `visit` for every type that the loaded libraries have, in no particular order.
void allocTrackForEach(std::function<void(AllocTrackTypeInfo const &)> const & visit);

/// Live objects of all types whose name starts with `prefix`.
U64 allocTrackLiveCount(std::string_view prefix);

/// A watcher that is told of every report, before memory is taken or given back. A tool
/// sets one to follow allocations one by one; null, the state at start, is no watcher.
struct AllocTrackWatcher {
    virtual void allocated(AllocTrackTypeInfo const & type, std::size_t size) noexcept = 0;
    virtual void released(AllocTrackTypeInfo const & type, std::size_t size) noexcept = 0;

protected:
    ~AllocTrackWatcher() = default;
};

void allocTrackWatcherIs(AllocTrackWatcher * watcher) noexcept;

/// The two operators that make a class tracked, for hand-written entities:
/// `class Dir : public Tracked<Dir, PtrInterface>`. T names itself with `vexTypeName`.
template <class T, class Base>
class Tracked : public Base {
public:
    using Base::Base;

    static void * operator new(std::size_t size) { return allocTrackAllocate(typeInfo(), size); }

    static void operator delete(void * memory, std::size_t size) noexcept {
        allocTrackRelease(typeInfo(), memory, size);
    }

private:
    static AllocTrackTypeInfo & typeInfo() noexcept {
        static AllocTrackTypeInfo info{T::vexTypeName, typeid(T)};
        return info;
    }
};

} // namespace Vex
