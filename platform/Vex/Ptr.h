#pragma once

#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

namespace [[gnu::visibility("default")]] Vex {

/// A shared, counted pointer to an entity. The count lives in the entity (`PtrInterface`),
/// so a plain pointer to an entity can be turned into a `Ptr` again at any time, and a
/// `Ptr` is as wide as a plain pointer.
template <class T>
class Ptr {
public:
    constexpr Ptr() noexcept = default;

    constexpr Ptr(std::nullptr_t) noexcept {}

    /// Shares `object`, which may be null.
    explicit Ptr(T * object) noexcept : object_(object) { hold(); }

    Ptr(Ptr const & other) noexcept : object_(other.object_) { hold(); }

    Ptr(Ptr && other) noexcept : object_(std::exchange(other.object_, nullptr)) {}

    /// Converts to a `Ptr` to a base or to a constant.
    template <class U>
    requires std::is_convertible_v<U *, T *> Ptr(Ptr<U> const & other)
    noexcept : object_(other.ptr()) { hold(); }

    ~Ptr() { drop(); }

    Ptr & operator=(Ptr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    /// The object, or null. The returned pointer does not share ownership.
    T * ptr() const noexcept { return object_; }

    T & operator*() const noexcept { return *object_; }

    T * operator->() const noexcept { return object_; }

    explicit operator bool() const noexcept { return object_ != nullptr; }

    template <class U>
    friend bool operator==(Ptr const & a, Ptr<U> const & b) noexcept {
        return a.ptr() == b.ptr();
    }

    friend bool operator==(Ptr const & a, std::nullptr_t) noexcept { return a.object_ == nullptr; }

private:
    void hold() const noexcept {
        if (object_) {
            object_->newRef();
        }
    }

    void drop() noexcept {
        if (object_) {
            object_->deleteRef();
        }
    }

    T * object_ = nullptr;
};

/// Creates an object of type T and returns the first `Ptr` to it.
template <class T, class... Args>
Ptr<T> makePtr(Args &&... args) {
    return Ptr<T>(new T(std::forward<Args>(args)...));
}

/// A checked downcast: null if `object` is null or not a T.
template <class T, class U>
Ptr<T> dynamicPtr(Ptr<U> const & object) noexcept {
    return Ptr<T>(dynamic_cast<T *>(object.ptr()));
}

} // namespace Vex

template <class T>
struct std::hash<Vex::Ptr<T>> {
    std::size_t operator()(Vex::Ptr<T> const & pointer) const noexcept {
        return std::hash<T *>()(pointer.ptr());
    }
};
