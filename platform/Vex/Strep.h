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
/// generates its `valueToStrep` and the constructor that reads it. Here is what both call
/// for the attributes, whose types bring no more than `stringValue()` and `fromString()`.
///
/// The forms of attributes stand in the form of their value as they are, neither quoted nor
/// escaped. So where one ends must be seen from its own bytes: a word's at the first byte
/// that is in no word, a text's at what can follow it.
///
/// Every reader takes [it, end), which lies within one String, and moves `it` behind what
/// it read. When it raises an error, `it` may stand anywhere in the range.
namespace [[gnu::visibility("default")]] Vex {

/// A text, which is its own form.
template <class T>
concept StrepText = std::convertible_to<T const &, std::string_view>;

/// A type that says itself how it is written.
template <class T>
concept HasStringValue = requires(T const & value) {
    { value.stringValue() } -> StrepText;
};

/// The form of an attribute of the platform's types: True or False, a decimal number, a
/// text as it is, else `stringValue()`. A type that is written in another way declares an
/// overload in its own namespace.
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

/// The form of a value of any type, the model's own among them; nothing when it has none.
template <class T>
std::optional<String> strepOf(T const & value) {
    if constexpr (requires { valueToStrep(value); }) {
        return valueToStrep(value);
    } else {
        return std::nullopt;
    }
}

/// Moves `it` behind `literal`, which must stand there. Raises a `ParseError` that shows
/// what stands there instead.
void needString(String::IteratorConst & it, String::IteratorConst const & end,
                std::string_view literal);

/// Raises a `ParseError` that shows what stands at `it`, unless that is the end.
void strepToValueEnd(String::IteratorConst const & it, String::IteratorConst const & end);

/// Takes the longest run of letters, digits, '.', ':', '-' and '/', of which the forms of
/// numbers, addresses and prefixes are made. It may be empty.
std::string_view strepWord(String::IteratorConst & it, String::IteratorConst const & end);

/// Takes all up to the next ", '" or "})", or to the end: up to where the next attribute
/// of the value would begin, or the value would end.
///
/// A text that holds one of these is written, but not read back: it is cut there, and then
/// the form has more such marks than attributes, so that in the end `needString` or
/// `strepToValueEnd` refuses it. It is never taken for another value.
std::string_view strepText(String::IteratorConst & it, String::IteratorConst const & end);

/// Reads True or False. Raises `ParseError` for anything else.
bool strepBool(String::IteratorConst & it, String::IteratorConst const & end);

/// Reads a decimal number without leading zeros. Raises `RangeError` for one above `max`,
/// `ParseError` for anything else.
U64 strepNumber(String::IteratorConst & it, String::IteratorConst const & end, U64 max);

/// Reads the form of an attribute. A type with a constructor from a string range, such as a
/// model's value, reads itself, with the errors that it promises; any other is given the
/// word there, and refuses it with the error of its `fromString`.
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
/// "moveCount: '4294967296': expected a number from 0 to 4294967295". Within nested values
/// the names add up to a path.
[[noreturn]] void rethrowFromDeserializeAttr(RangeError const & error, std::string_view attribute);

/// Reads the whole of `strep` as the form of a T. Raises what reading the T raises, and a
/// `ParseError` when anything stands behind it.
template <class T>
T strepToValue(String const & strep) {
    auto it = strep.begin();
    auto const end = strep.end();
    auto value = deserializeAttr<T>(it, end);
    strepToValueEnd(it, end);
    return value;
}

} // namespace Vex
