#include "Vex/Errors.h"

#include "Vex/Types.h"

namespace Vex {

namespace {

constexpr std::size_t longestQuote = 60;

} // namespace

ParseError::ParseError(std::string_view text, std::string_view expected)
    : Error(quoted(text).append(": expected ").append(expected)) {}

String quoted(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    String result("'");
    for (char const character : text.substr(0, longestQuote)) {
        auto const byte = static_cast<U8>(character);
        if (byte < 0x20 || byte > 0x7e) {
            result.append("\\x").append({digits[byte >> 4], digits[byte & 0xF]});
            continue;
        }
        if (character == '\'' || character == '\\') {
            result.push_back('\\');
        }
        result.push_back(character);
    }
    result.append(text.size() > longestQuote ? "'..." : "'");
    return result;
}

} // namespace Vex
