#pragma once

#include "Vex/MemberCall.h"
#include "Vex/TypeOperations.h"

#include <functional>
#include <memory>
#include <type_traits>

/// The kinds of attribute, each implementing its operations with the generated member
/// functions. A type is described by one object for each attribute (TypeImpl.h).
///
/// An overloaded member function is called through a function object, since the name of an
/// overload set cannot be passed as an argument.
namespace Vex {

/// A read-only attribute: a constructor argument, including one that is an entity
/// pointer.
template <class T, class R>
class Readable final : public AttributeOperations {
public:
    constexpr Readable(U32 number, R (T::*getter)() const)
        : AttributeOperations(number), get_(getter) {}

    AnyValue get(AnyValue const & object) const override {
        return reading<T>(object,
                          [&](T const & read) { return AnyValue(std::invoke(get_, read)); });
    }

private:
    R (T::*get_)() const;
};

/// An attribute that is the same for every object.
template <class T, class R>
class Constant final : public AttributeOperations {
public:
    constexpr Constant(U32 number, R (*getter)()) : AttributeOperations(number), get_(getter) {}

    AnyValue get(AnyValue const & object) const override {
        return reading<T>(object, [&](T const &) { return AnyValue(get_()); });
    }

private:
    R (*get_)();
};

/// An attribute that can be read and set, including an entity pointer.
template <class T, class R, class Set>
class Plain final : public AttributeOperations {
public:
    constexpr Plain(U32 number, R (T::*getter)() const, Set setter)
        : AttributeOperations(number), get_(getter), set_(setter) {}

    AnyValue get(AnyValue const & object) const override {
        return reading<T>(object,
                          [&](T const & read) { return AnyValue(std::invoke(get_, read)); });
    }

    void set(AnyValue & object, AnyValue const & value) const override {
        auto held = value.as<std::remove_cvref_t<R>>();
        changing<T>(object, [&](T & changed) { std::invoke(set_, changed, std::move(held)); });
    }

private:
    R (T::*get_)() const;
    Set set_;
};

/// An owned entity, created on demand.
template <class T, class E>
class OwnedEntity final : public AttributeOperations {
public:
    constexpr OwnedEntity(U32 number, std::type_identity_t<Ptr<E const> (T::*)() const> getter,
                          Ptr<E> (T::*findOrCreate)(), void (T::*drop)())
        : AttributeOperations(number), get_(getter), findOrCreate_(findOrCreate), drop_(drop) {}

    AnyValue get(AnyValue const & object) const override {
        auto const found =
            reading<T>(object, [&](T const & read) { return std::invoke(get_, read); });
        if (object.isConstantEntity() || !found) {
            return found;
        }
        return changing<T>(
            object, [&](T & changed) { return AnyValue(std::invoke(findOrCreate_, changed)); });
    }

    AnyValue insert(AnyValue & object, AnyValues const & arguments) const override {
        return MemberCall<decltype(findOrCreate_)>::call(findOrCreate_, object, arguments);
    }

    AnyValue remove(AnyValue & object, AnyValues const & key) const override {
        return MemberCall<decltype(drop_)>::call(drop_, object, key);
    }

private:
    Ptr<E const> (T::*get_)() const;
    Ptr<E> (T::*findOrCreate_)();
    void (T::*drop_)();
};

/// A collection of any kind. The parameters of the member function `insert` determine
/// what is inserted and how.
template <class T, class Map, class Insert, class Remove, class Clear>
class Collection final : public AttributeOperations {
public:
    /// `remover` calls the deletion by key, which shares its name with the deletion by
    /// iterator.
    constexpr Collection(U32 number, Map const & (T::*whole)() const, Insert inserter,
                         Remove remover, Clear clearer)
        : AttributeOperations(number), whole_(whole), insert_(inserter), remove_(remover),
          clear_(clearer) {}

    AnyValue insert(AnyValue & object, AnyValues const & arguments) const override {
        return MemberCall<Insert>::call(insert_, object, arguments);
    }

    AnyValue remove(AnyValue & object, AnyValues const & arguments) const override {
        expectArguments<Key>(arguments);
        auto const key = arguments.front().as<Key>("key");
        return changing<T>(object, [&](T & changed) {
            return std::invoke(whole_, changed).has(key) ? AnyValue(remove_(changed, key))
                                                         : AnyValue();
        });
    }

    void clear(AnyValue & object) const override {
        changing<T>(object, [&](T & changed) { std::invoke(clear_, changed); });
    }

    AnyValue lookup(AnyValue const & object, AnyValue const & boxedKey) const override {
        auto const key = boxedKey.as<Key>("key");
        return reading<T>(object, [&](T const & read) {
            auto const * slot = std::invoke(whole_, read).find(key);
            return slot ? elementOf(object, *slot) : AnyValue();
        });
    }

    std::size_t count(AnyValue const & object) const override {
        return reading<T>(object, [&](T const & read) { return std::invoke(whole_, read).size(); });
    }

    AnyIterator iterate(AnyValue const & object) const override {
        return AnyIterator(std::make_unique<Steps>(object, whole_));
    }

private:
    using Whole = Map const & (T::*)() const;
    using Slot = typename Map::Slot;
    using Key = typename Map::Key;

    /// What a slot holds. An owned entity can be changed if its owner can be changed.
    static AnyValue elementOf(AnyValue const & owner, Slot const & slot) {
        AnyValue element = slot.element();
        if constexpr (isEntityPointer<typename Slot::Element>) {
            if (owner.isConstantEntity()) {
                return constantPtr(slot.element());
            }
        }
        return element;
    }

    template <class E>
    static Ptr<E const> constantPtr(Ptr<E> const & entity) {
        return entity;
    }

    /// Holds the object, whose collection must outlive the walk.
    class Steps final : public AnyIterator::Walk {
    public:
        Steps(AnyValue const & object, Whole whole)
            : object_(object), at_(reading<T>(object_, [&](T const & read) {
                  return std::invoke(whole, read).begin();
              })) {}

        bool atEntry() const noexcept override { return static_cast<bool>(at_); }

        AnyValue key() const override { return AnyValue(Key(at_.key())); }

        AnyValue element() const override { return elementOf(object_, at_.slot()); }

        void step() override { ++at_; }

    private:
        AnyValue object_;
        typename Map::Iterator at_;
    };

    Whole whole_;
    Insert insert_;
    Remove remove_;
    Clear clear_;
};

} // namespace Vex
