#include "Vex/Strep.h"

#include "Vex/Digits.h"

#include <algorithm>
#include <charconv>

namespace [[gnu::visibility("default")]] Vex {

namespace {

constexpr bool isWordCharacter(char character) noexcept {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z') ||
           (character >= 'A' && character <= 'Z') || character == '.' || character == ':' ||
           character == '-' || character == '/';
}

/// Takes the first `length` bytes of [it, end), or all of them if there are fewer.
std::string_view take(String::IteratorConst & it, String::IteratorConst const & end,
                      std::size_t length) {
    std::string_view const taken = std::string_view(it, end).substr(0, length);
    it += static_cast<std::ptrdiff_t>(taken.size());
    return taken;
}

String namingAttribute(Error const & error, std::string_view attribute) {
    return String(attribute).append(": ").append(error.what());
}

} // namespace

void needString(String::IteratorConst & it, String::IteratorConst const & end,
                std::string_view literal) {
    std::string_view const found(it, end);
    if (!found.starts_with(literal)) {
        throw ParseError(found, std::string("\"").append(literal).append("\""));
    }
    it += static_cast<std::ptrdiff_t>(literal.size());
}

void strepToValueEnd(String::IteratorConst const & it, String::IteratorConst const & end) {
    if (it != end) {
        throw ParseError(std::string_view(it, end), "the end of the text");
    }
}

std::string_view strepWord(String::IteratorConst & it, String::IteratorConst const & end) {
    auto const wordEnd = std::find_if_not(it, end, isWordCharacter);
    return take(it, end, static_cast<std::size_t>(wordEnd - it));
}

std::string_view strepText(String::IteratorConst & it, String::IteratorConst const & end) {
    std::string_view const rest(it, end);
    return take(it, end, std::min(rest.find(", '"), rest.find("})")));
}

bool strepBool(String::IteratorConst & it, String::IteratorConst const & end) {
    auto const word = strepWord(it, end);
    if (word != "True" && word != "False") {
        throw ParseError(word, "True or False");
    }
    return word == "True";
}

U64 strepNumber(String::IteratorConst & it, String::IteratorConst const & end, U64 max) {
    auto const word = strepWord(it, end);
    U64 number = 0;
    auto const read = std::from_chars(word.data(), word.data() + word.size(), number);
    if (!isDecimal(word) || read.ec != std::errc() || number > max) {
        refuseNumber(word, "a number from 0 to " + std::to_string(max));
    }
    return number;
}

void rethrowFromDeserializeAttr(RangeError const & error, std::string_view attribute) {
    throw RangeError(namingAttribute(error, attribute));
}

void rethrowFromDeserializeAttr(ParseError const & error, std::string_view attribute) {
    throw ParseError(namingAttribute(error, attribute));
}

} // namespace Vex
