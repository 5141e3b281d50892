#pragma once

#include "Vex/Types.h"

#include <array>
#include <optional>
#include <string_view>

/// The digits that text forms of value types are made of.
///
/// The standard readers (`strtoul`, `stoi`) take blanks, signs and trailing text, and
/// follow the locale; an address or identifier has exactly one decimal spelling here.
namespace Vex {

/// Whether the text is a decimal number of any size, spelled as `readDecimal` accepts it.
constexpr bool isDecimal(std::string_view text) noexcept {
    if (text.empty() || (text.size() > 1 && text[0] == '0')) {
        return false;
    }
    return text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Reads a whole text as a decimal number from 0 to `max`: digits only, with no leading
/// zero except in "0" itself. Returns nullopt for anything else.
constexpr std::optional<U32> readDecimal(std::string_view text, U32 max) noexcept {
    constexpr std::size_t mostDigits = 10;
    if (text.empty() || text.size() > mostDigits || (text.size() > 1 && text[0] == '0')) {
        return std::nullopt;
    }
    U64 number = 0;
    for (char const digit : text) {
        if (digit < '0' || digit > '9') {
            return std::nullopt;
        }
        number = number * 10 + static_cast<U64>(digit - '0');
    }
    if (number > max) {
        return std::nullopt;
    }
    return static_cast<U32>(number);
}

/// The hexadecimal digits that the writers use.
inline constexpr std::string_view hexDigits = "0123456789abcdef";

/// Marks a byte in `hexValues` that is not a hexadecimal digit. It has bits that no digit
/// value has, so several digits can be read first and tested together.
inline constexpr U8 noHexDigit = 0xF0;

/// From a byte to the value of that hexadecimal digit, in either case.
inline constexpr std::array<U8, 256> hexValues = [] {
    std::array<U8, 256> values{};
    values.fill(noHexDigit);
    for (U8 value = 0; value < 16; ++value) {
        auto const digit = static_cast<U8>(hexDigits[value]);
        values[digit] = value;
        if (value > 9) {
            values[digit - U8{'a' - 'A'}] = value;
        }
    }
    return values;
}();

/// The value of a hexadecimal digit, or `noHexDigit`.
constexpr U8 hexValue(char digit) noexcept {
    return hexValues[static_cast<U8>(digit)];
}

} // namespace Vex
