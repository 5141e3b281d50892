#pragma once

#include "Vex/Type.h"
#include "Vex/Types.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <string_view>
#include <typeinfo>

namespace [[gnu::visibility("default")]] Vex {

/// The tracker's record of one entity type. Each type has one, with static storage
/// duration (`vexAllocTrackTypeInfo_`), which adds itself to the tracker's list when its
/// library is loaded.
class AllocTrackTypeInfo {
public:
    AllocTrackTypeInfo(char const * name, std::type_info const & type) noexcept;
    AllocTrackTypeInfo(AllocTrackTypeInfo const &) = delete;
    AllocTrackTypeInfo & operator=(AllocTrackTypeInfo const &) = delete;

    /// The type's full name, "VxlanController::Cli::VniStatus" for example.
    char const * name() const noexcept { return name_; }

    /// The type's run-time type.
    std::type_info const & type() const noexcept { return type_; }

    /// The number of live objects of exactly this type.
    U64 liveCount() const noexcept { return liveCount_.load(std::memory_order_relaxed); }

    /// The bytes that these objects take, not counting what they own.
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

/// Reports an object of `size` bytes to the tracker, then allocates the memory. Ends the
/// process if there is none, since a command cannot go on without memory.
void * allocTrackAllocate(AllocTrackTypeInfo & type, std::size_t size) noexcept;

/// Reports the end of an object to the tracker, then frees its memory.
void allocTrackRelease(AllocTrackTypeInfo & type, void * memory, std::size_t size) noexcept;

/// Calls `visit` for every type of the loaded libraries, in no particular order.
void allocTrackForEach(std::function<void(AllocTrackTypeInfo const &)> const & visit);

/// The number of live objects of all types whose name starts with `prefix`.
U64 allocTrackLiveCount(std::string_view prefix);

/// Receives every report, before memory is allocated or freed. A tool sets one to follow
/// single allocations; null, the initial state, means no watcher.
struct AllocTrackWatcher {
    virtual void allocated(AllocTrackTypeInfo const & type, std::size_t size) noexcept = 0;
    virtual void released(AllocTrackTypeInfo const & type, std::size_t size) noexcept = 0;

protected:
    ~AllocTrackWatcher() = default;
};

void allocTrackWatcherIs(AllocTrackWatcher * watcher) noexcept;

/// What modelc generates for the entities of a model, for hand-written ones: the two
/// operators that make a class tracked, and a reflection record.
/// `class Dir : public Tracked<Dir, PtrInterface>`. T names itself with `vexTypeName`.
template <class T, class Base>
class Tracked : public Base {
public:
    using Base::Base;

    /// The reflection record of T: its name and its base. It has no attributes and no
    /// operations, and the type table does not have it.
    inline static constinit Type const _vexType{
        T::vexTypeName, Type::Kind::entity, &Base::_vexType, {}, {}, {}};

    Type const & fwkType() const noexcept override { return _vexType; }

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
