#pragma once

#include "Vex/Errors.h"
#include "Vex/String.h"
#include "Vex/Types.h"

#include <concepts>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

/// The string forms ("streps") in which tools show values of any type and read them back.
///
/// A model's value is written as Value('NAME', ** {'ATTRIBUTE': FORM, ...}), and modelc
/// generates its `valueToStrep` and the constructor that reads it. Both call the
/// functions below for the attributes, whose types only need `stringValue()` and
/// `fromString()`.
///
/// The form of a value contains the forms of its attributes unquoted and unescaped. So the
/// bytes themselves must show where one ends: a word ends at the first byte that no word
/// contains, a text at what can follow it.
///
/// Every reader takes [it, end), a range within one String, and moves `it` past what it
/// read. After an error, `it` can be anywhere in the range.
namespace [[gnu::visibility("default")]] Vex {

/// A text, which is its own form.
template <class T>
concept StrepText = std::convertible_to<T const &, std::string_view>;

/// A type that defines its own text form.
template <class T>
concept HasStringValue = requires(T const & value) {
    { value.stringValue() } -> StrepText;
};

/// The form of an attribute of one of the platform's types: True or False, a decimal
/// number, text as it is, otherwise `stringValue()`. A type that is written differently
/// declares an overload in its own namespace.
template <class T>

requires StrepText<T> || std::unsigned_integral<T> || HasStringValue<T>
    String valueToStrep(T const & value) {
    if constexpr (std::same_as<T, bool>) {
        return value ? "True" : "False";
    } else if constexpr (std::unsigned_integral<T>) {
        return std::to_string(value);
    } else if constexpr (StrepText<T>) {
        return String(std::string_view(value));
    } else {
        return String(std::string_view(value.stringValue()));
    }
}

/// The form of a value of any type, including a model's own; nullopt if it has none.
template <class T>
std::optional<String> strepOf(T const & value) {
    if constexpr (requires { valueToStrep(value); }) {
        return valueToStrep(value);
    } else {
        return std::nullopt;
    }
}

/// Moves `it` past `literal`. Raises a `ParseError` that shows what was found instead, if
/// it is not there.
void needString(String::IteratorConst & it, String::IteratorConst const & end,
                std::string_view literal);

/// Raises a `ParseError` that shows the text at `it`, unless `it` is at the end.
void strepToValueEnd(String::IteratorConst const & it, String::IteratorConst const & end);

/// Takes the longest run of letters, digits, '.', ':', '-' and '/', the characters of
/// numbers, addresses and prefixes. It can be empty.
std::string_view strepWord(String::IteratorConst & it, String::IteratorConst const & end);

/// Takes everything up to the next ", '" or "})", or to the end: up to where the next
/// attribute of the value would begin or the value would end.
///
/// A text that contains one of these is written but cannot be read back: it is cut there,
/// the form then has more such marks than attributes, and `needString` or
/// `strepToValueEnd` refuses it. It is never read as another value.
std::string_view strepText(String::IteratorConst & it, String::IteratorConst const & end);

/// Reads True or False. Raises `ParseError` for anything else.
bool strepBool(String::IteratorConst & it, String::IteratorConst const & end);

/// Reads a decimal number without leading zeros. Raises `RangeError` for a number above
/// `max`, `ParseError` for anything else.
U64 strepNumber(String::IteratorConst & it, String::IteratorConst const & end, U64 max);

/// Reads the form of an attribute. A type with a constructor from a string range, such as a
/// model's value, reads itself and raises its own errors; for any other type, its
/// `fromString` is called with the next word and raises its own error.
template <class T>
T deserializeAttr(String::IteratorConst & it, String::IteratorConst const & end) {
    if constexpr (StrepText<T>) {
        return T(strepText(it, end));
    } else if constexpr (std::same_as<T, bool>) {
        return strepBool(it, end);
    } else if constexpr (std::unsigned_integral<T>) {
        return static_cast<T>(strepNumber(it, end, std::numeric_limits<T>::max()));
    } else if constexpr (std::constructible_from<T, String::IteratorConst &,
                                                 String::IteratorConst const &>) {
        return T(it, end);
    } else {
        return T::fromString(strepWord(it, end));
    }
}

/// Raises a `RangeError` of the same text with the name of the attribute in front:
/// "moveCount: '4294967296': expected a number from 0 to 4294967295". In nested values the
/// names form a path.
[[noreturn]] void rethrowFromDeserializeAttr(RangeError const & error, std::string_view attribute);

/// The same for a `ParseError`: "vtepIp: '10.0.0': expected an IPv4 address such as 10.0.0.1".
[[noreturn]] void rethrowFromDeserializeAttr(ParseError const & error, std::string_view attribute);

/// Reads the whole of `strep` as the form of a T. Raises what reading the T raises, and a
/// `ParseError` if anything follows it.
template <class T>
T strepToValue(String const & strep) {
    auto it = strep.begin();
    auto const end = strep.end();
    auto value = deserializeAttr<T>(it, end);
    strepToValueEnd(it, end);
    return value;
}

} // namespace Vex
