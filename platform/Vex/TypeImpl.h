#pragma once

#include "Vex/AttributeImpl.h"
#include "Vex/TypeOperations.h"

#include <tuple>
#include <utility>

namespace Vex {

/// Constructs an object of type `T` from arguments of these types.
template <class T, class... Args>
struct Constructor {
    static AnyValue construct(AnyValues const & arguments) {
        expectArguments<Args...>(arguments);
        return construct(arguments, std::index_sequence_for<Args...>());
    }

private:
    template <std::size_t... i>
    static AnyValue construct([[maybe_unused]] AnyValues const & arguments,
                              std::index_sequence<i...>) {
        if constexpr (isEntity<T>) {
            auto const entity = makePtr<T>(argument<Args>(arguments, i)...);
            entity->hasNotificationActiveIs(true);
            return entity;
        } else {
            return T(argument<Args>(arguments, i)...);
        }
    }
};

/// The operations of the model type `T`: its constructor and its own attributes, each
/// described by one of the classes of AttributeImpl.h, in the order of their numbers.
///
///     constexpr Vex::TypeImpl implOfSwitchMap{
///         Vex::Constructor<SwitchMap, Vex::String, Nolt::IpGenAddr>(),
///         Vex::Readable(130, &SwitchMap::switchId),
///         Vex::Readable(131, &SwitchMap::vtepAddr)};
///
/// Constant-initialised, so that a record can point to it before any code has run. Users
/// see it only as `TypeOperations`.
template <class T, class ConstructorOfT, class... Attributes>
class TypeImpl final : public TypeOperations {
public:
    constexpr explicit TypeImpl(ConstructorOfT, Attributes const &... attributes)
        : attributes_(attributes...) {}

private:
    Type const & type() const noexcept override { return T::_vexType; }

    AttributeOperations const * attribute([[maybe_unused]] U32 number) const noexcept override {
        AttributeOperations const * found = nullptr;
        std::apply(
            [&](auto const &... attribute) {
                (..., (found = attribute.number() == number ? &attribute : found));
            },
            attributes_);
        return found;
    }

    AnyValue constructed(AnyValues const & arguments) const override {
        return ConstructorOfT::construct(arguments);
    }

    std::optional<String> toText([[maybe_unused]] AnyValue const & object) const override {
        if constexpr (isEntity<T>) {
            return std::nullopt;
        } else {
            return strepOf(object.reference<T>());
        }
    }

    AnyValue fromText([[maybe_unused]] String const & text) const override {
        if constexpr (!isEntity<T>) {
            return strepToValue<T>(text);
        } else {
            return {};
        }
    }

    std::tuple<Attributes...> attributes_;
};

template <class T, class... Args, class... Attributes>
TypeImpl(Constructor<T, Args...>, Attributes const &...)
    -> TypeImpl<T, Constructor<T, Args...>, Attributes...>;

} // namespace Vex
