#pragma once

#include "Vex/Entity.h"
#include "Vex/Errors.h"
#include "Vex/Ptr.h"
#include "Vex/Strep.h"
#include "Vex/Types.h"

#include <any>
#include <concepts>
#include <optional>
#include <typeinfo>
#include <utility>

namespace [[gnu::visibility("default")]] Vex {

/// An operand does not fit: a value has another type than expected, or there are too many
/// or too few values. The text says what was expected and what was found.
class OperandError : public Error {
public:
    using Error::Error;
};

/// The name of a C++ type as source code spells it: "Nolt::EthAddr" or "U32".
String typeText(std::type_info const & type);

class AnyValue;

} // namespace Vex

namespace Vex {

/// The number types that models use. An `AnyValue` takes no others, not even a plain
/// `int`: no attribute has such a type.
template <class T>
concept ModelNumber = std::same_as<T, bool> || std::same_as<T, U8> || std::same_as<T, U16> ||
    std::same_as<T, U32> || std::same_as<T, U64>;

template <class T>
inline constexpr bool isEntityPointer = false;

template <class T>
inline constexpr bool isEntityPointer<Ptr<T>> = true;

/// What an `AnyValue` holds directly: everything except pointers to entities.
template <class T>
concept Boxable = ModelNumber<T> ||
    (std::is_class_v<T> && !std::same_as<T, AnyValue> && !isEntityPointer<T> &&
     std::equality_comparable<T> && std::copy_constructible<T>);

/// What an `AnyValue` needs to know about the type that it holds.
struct BoxedType {
    std::type_info const & info;
    bool isConstantEntity;
    bool (*equal)(std::any const & a, std::any const & b); ///< of values
    std::optional<String> (*text)(std::any const & value);
    Type const * (*reflection)(std::any const & value);
};

template <class T>
BoxedType const & boxedValueType() noexcept {
    static constexpr BoxedType type{
        typeid(T), false,
        [](std::any const & a, std::any const & b) {
            auto const * other = std::any_cast<T>(&b);
            return other && *std::any_cast<T>(&a) == *other;
        },
        [](std::any const & value) { return strepOf(*std::any_cast<T>(&value)); },
        [](std::any const &) -> Type const * {
            if constexpr (requires { T::_vexType; }) {
                return &T::_vexType;
            } else {
                return nullptr;
            }
        }};
    return type;
}

template <class T>
BoxedType const & boxedPointerType() noexcept {
    using Held = Ptr<std::conditional_t<std::is_const_v<T>, PtrInterface const, PtrInterface>>;
    static constexpr BoxedType type{
        typeid(Ptr<T>), std::is_const_v<T>, nullptr,
        [](std::any const &) -> std::optional<String> { return std::nullopt; },
        [](std::any const & value) -> Type const * {
            auto const & entity = *std::any_cast<Held>(&value);
            return entity ? &entity->fwkType() : nullptr;
        }};
    return type;
}

} // namespace Vex

namespace [[gnu::visibility("default")]] Vex {

/// One value of any type that an attribute can have: a boolean, a number, a text, a value
/// type of the platform or of a model, or a shared pointer to an entity. Generic tools use
/// it where they do not know the types.
///
/// Copying an `AnyValue` copies a value but shares an entity; one that was moved from is
/// empty. The only conversions are those of `Ptr`: to a base, to a constant, and back down
/// to the entity's run-time type.
class AnyValue {
public:
    /// Holds nothing.
    AnyValue() noexcept = default;

    AnyValue(AnyValue const &) = default;

    AnyValue(AnyValue && other) noexcept
        : type_(std::exchange(other.type_, nullptr)),
          value_(std::exchange(other.value_, std::any())) {}

    AnyValue & operator=(AnyValue other) noexcept {
        std::swap(type_, other.type_);
        value_.swap(other.value_);
        return *this;
    }

    ~AnyValue() = default;

    /// A null pointer, which fits wherever an entity is expected.
    AnyValue(std::nullptr_t);

    template <Boxable T>
    AnyValue(T value)
        : type_(&boxedValueType<T>()), value_(std::in_place_type<T>, std::move(value)) {}

    template <class T>
    AnyValue(Ptr<T> const & entity) : type_(&boxedPointerType<T>()) {
        if constexpr (std::is_const_v<T>) {
            value_ = Ptr<PtrInterface const>(entity);
        } else {
            value_ = Ptr<PtrInterface>(entity);
        }
    }

    /// Whether it holds nothing.
    bool empty() const noexcept { return !type_; }

    /// What it holds: "Nolt::EthAddr", "Vex::Ptr<Vex::Dir const>", or "nothing".
    String typeName() const;

    /// The reflection record of the model value or of the entity's run-time type; null for
    /// everything else and for a null pointer.
    Type const * reflection() const;

    /// The text of a value (an attribute's or a whole model value); nullopt for a value
    /// that has no text form and for every pointer.
    std::optional<String> text() const;

    /// Whether it is a pointer to a constant entity.
    bool isConstantEntity() const noexcept { return type_ && type_->isConstantEntity; }

    /// Whether it is a null pointer.
    bool isNull() const noexcept;

    /// What it holds, as a `T`. Raises an `OperandError` if it does not hold one:
    /// "expected Nolt::EthAddr, found U32", preceded by `what` and a colon.
    template <class T>
    T as(std::string_view what = {}) const {
        if constexpr (isEntityPointer<T>) {
            return entity(std::type_identity<T>(), what);
        } else {
            return reference<T>(what);
        }
    }

    /// The value inside, to be read or changed in place. Raises the same errors as `as`.
    template <Boxable T>
    T const & reference(std::string_view what = {}) const {
        auto const * value = std::any_cast<T>(&value_);
        if (!value) {
            throwMismatch(typeid(T), what);
        }
        return *value;
    }

    template <Boxable T>
    T & reference(std::string_view what = {}) {
        return const_cast<T &>(std::as_const(*this).reference<T>(what));
    }

    /// Values are equal if they have the same type and compare equal; pointers, if they
    /// point to the same entity, constant or not.
    bool operator==(AnyValue const & other) const;

private:
    /// Stores the entity that it points to. False if it does not hold a pointer.
    bool entity(Ptr<PtrInterface const> & constant) const;
    bool entity(Ptr<PtrInterface> & changeable) const;

    template <class T>
    Ptr<T> entity(std::type_identity<Ptr<T>>, std::string_view what) const {
        Ptr<std::conditional_t<std::is_const_v<T>, PtrInterface const, PtrInterface>> held;
        bool const found = entity(held);
        auto result = dynamicPtr<T>(held);
        if (!found || (held && !result)) {
            throwMismatch(typeid(Ptr<T>), what);
        }
        return result;
    }

    [[noreturn]] void throwMismatch(std::type_info const & expected, std::string_view what) const;

    BoxedType const * type_ = nullptr;
    std::any value_;
};

} // namespace Vex
