#pragma once

#include "Vex/AnyValue.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace [[gnu::visibility("default")]] Vex {

/// Raises an `OperandError` unless `found` is the number of `expected` types: "expected 2
/// arguments (Vex::String, bool), found 1".
void expectCount(std::size_t found, std::initializer_list<std::type_info const *> expected);

/// Raises an `OperandError` when the pointer to the object is null.
void expectObject(AnyValue const & object);

} // namespace Vex

/// Calling a member function on a boxed object with boxed arguments. Everything is unboxed
/// before the call, so that nothing has changed if an argument does not fit.
namespace Vex {

template <class T>
inline constexpr bool isEntity = std::is_base_of_v<PtrInterface, T>;

/// Raises an `OperandError` unless there is one argument for each of `Args`.
template <class... Args>
void expectArguments(std::vector<AnyValue> const & arguments) {
    expectCount(arguments.size(), {&typeid(Args)...});
}

/// The argument at `place`, counted from 0, as a `T`.
template <class T>
T argument(std::vector<AnyValue> const & arguments, std::size_t place) {
    return arguments[place].as<T>("argument " + std::to_string(place + 1));
}

/// Calls `use` with the object for reading.
template <class T, class Use>
auto reading(AnyValue const & object, Use use) {
    if constexpr (isEntity<T>) {
        auto const entity = object.as<Ptr<T const>>("object");
        expectObject(object);
        return use(*entity);
    } else {
        return use(object.reference<T>("object"));
    }
}

/// Calls `use` with the object for changing. Refuses a pointer to a constant entity.
template <class T, class Use>
auto changing(AnyValue const & object, Use use) requires isEntity<T> {
    auto const entity = object.as<Ptr<T>>("object");
    expectObject(object);
    return use(*entity);
}

template <class T, class Use>
auto changing(AnyValue & object, Use use) requires(!isEntity<T>) {
    return use(object.reference<T>("object"));
}

/// Calls a member function of type `F`. A returned entity is boxed; the result of a
/// `void` function is an empty `AnyValue`.
template <class F>
struct MemberCall;

template <class T, class R, class... Args>
struct MemberCall<R (T::*)(Args...)> {
    using Owner = T;

    template <class Function>
    static AnyValue call(Function function, AnyValue & object,
                         std::vector<AnyValue> const & arguments) {
        expectArguments<std::remove_cvref_t<Args>...>(arguments);
        return call(function, object, arguments, std::index_sequence_for<Args...>());
    }

private:
    template <class Function, std::size_t... i>
    static AnyValue call(Function function, AnyValue & object,
                         [[maybe_unused]] std::vector<AnyValue> const & arguments,
                         std::index_sequence<i...>) {
        std::tuple<std::remove_cvref_t<Args>...> taken{
            argument<std::remove_cvref_t<Args>>(arguments, i)...};
        return changing<T>(object, [&](T & changed) -> AnyValue {
            if constexpr (std::is_void_v<R>) {
                std::invoke(function, changed, std::get<i>(std::move(taken))...);
                return {};
            } else {
                return std::invoke(function, changed, std::get<i>(std::move(taken))...);
            }
        });
    }
};

/// The mutators of values are `&`-qualified: they can be called only on modifiable
/// values.
template <class T, class R, class... Args>
struct MemberCall<R (T::*)(Args...) &> : MemberCall<R (T::*)(Args...)> {};

} // namespace Vex
