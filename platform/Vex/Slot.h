#pragma once

#include "Vex/Ptr.h"

#include <utility>

/// The entries of keyed collections. A slot has a key (`key()`), what an iteration shows
/// of it (`view()`), and, for the generated operations, its element.
namespace [[gnu::visibility("default")]] Vex {

/// A value that contains its key; `getter` is the member function that reads it.
template <class K, class V, auto getter>
class ValueSlot {
public:
    using Key = K;
    using Element = V;

    explicit ValueSlot(V value) : value_(std::move(value)) {}

    decltype(auto) key() const { return (value_.*getter)(); }

    V const & view() const noexcept { return value_; }

    V & element() noexcept { return value_; }

    V const & element() const noexcept { return value_; }

    friend bool operator==(ValueSlot const & a, ValueSlot const & b) {
        return a.value_ == b.value_;
    }

private:
    V value_;
};

/// A member of a set with its bool, which every writer sets to true.
template <class K>
class SetSlot {
public:
    using Key = K;
    using Element = bool;

    SetSlot(K key, bool member) : key_(std::move(key)), member_(member) {}

    K const & key() const noexcept { return key_; }

    K const & view() const noexcept { return key_; }

    bool & element() noexcept { return member_; }

    bool const & element() const noexcept { return member_; }

    friend bool operator==(SetSlot const & a, SetSlot const & b) {
        return a.key_ == b.key_ && a.member_ == b.member_;
    }

private:
    K key_;
    bool member_;
};

/// An owned entity that contains its key.
template <class K, class T, auto getter>
class EntitySlot {
public:
    using Key = K;
    using Element = Ptr<T>;

    explicit EntitySlot(Ptr<T> entity) : entity_(std::move(entity)) {}

    decltype(auto) key() const { return (entity_.ptr()->*getter)(); }

    T const & view() const noexcept { return *entity_; }

    Ptr<T> & element() noexcept { return entity_; }

    Ptr<T> const & element() const noexcept { return entity_; }

private:
    Ptr<T> entity_;
};

/// An entity that belongs elsewhere, shared under a key that the collection stores.
template <class K, class T>
class PtrSlot {
public:
    using Key = K;
    using Element = Ptr<T const>;

    PtrSlot(K key, Ptr<T const> entity) : key_(std::move(key)), entity_(std::move(entity)) {}

    K const & key() const noexcept { return key_; }

    T const & view() const noexcept { return *entity_; }

    Ptr<T const> & element() noexcept { return entity_; }

    Ptr<T const> const & element() const noexcept { return entity_; }

private:
    K key_;
    Ptr<T const> entity_;
};

} // namespace Vex
