#pragma once

#include "Vex/Errors.h"
#include "Vex/String.h"

#include <string>
#include <type_traits>

namespace [[gnu::visibility("default")]] Vex {

/// An existing element was requested with different constructor arguments.
class ReinstantiationError : public Error {
public:
    using Error::Error;
};

/// Raises a `ReinstantiationError` whose text names the type, the key of the element, the
/// attribute, and its new and stored value:
/// "VxlanController::Cli::SwitchMap leaf1: vtepAddr cannot change from 10.0.0.1 to 10.0.0.2".
/// The key and the values are written as `printable()` does.
[[noreturn]] void throwMutatorReinstantiating(std::string_view type, String const & key,
                                              std::string_view attribute, String const & newValue,
                                              String const & storedValue);

/// The text of an attribute's value for such a message.
template <class T>
String attributeText(T const & value) {
    if constexpr (std::is_arithmetic_v<T>) {
        return std::to_string(value);
    } else if constexpr (std::is_convertible_v<T const &, std::string_view>) {
        return String(std::string_view(value));
    } else {
        return value.stringValue();
    }
}

} // namespace Vex
