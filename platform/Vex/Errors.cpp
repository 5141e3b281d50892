#include "Vex/Errors.h"

#include "Vex/Digits.h"
#include "Vex/Types.h"

namespace [[gnu::visibility("default")]] Vex {

namespace {

constexpr std::size_t longestQuote = 60;

String message(std::string_view text, std::string_view expected) {
    String result = quoted(text);
    result.append(": expected ").append(expected);
    return result;
}

} // namespace

RangeError::RangeError(std::string_view text, std::string_view expected)
    : Error(message(text, expected)) {}

ParseError::ParseError(std::string_view text, std::string_view expected)
    : Error(message(text, expected)) {}

void refuseNumber(std::string_view text, std::string_view expected) {
    if (isDecimal(text)) {
        throw RangeError(text, expected);
    }
    throw ParseError(text, expected);
}

String printable(std::string_view text) {
    String result;
    for (char const character : text) {
        auto const byte = static_cast<U8>(character);
        if (byte < 0x20 || byte > 0x7e) {
            result.append("\\x").append({hexDigits[byte >> 4], hexDigits[byte & 0xF]});
        } else {
            result.push_back(character);
        }
    }
    return result;
}

String quoted(std::string_view text) {
    String result("'");
    for (char const character : text.substr(0, longestQuote)) {
        if (character == '\'' || character == '\\') {
            result.push_back('\\');
        }
        result.append(printable({&character, 1}));
    }
    result.append(text.size() > longestQuote ? "'..." : "'");
    return result;
}

} // namespace Vex
