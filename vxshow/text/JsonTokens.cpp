#include "vxshow/text/JsonTokens.h"

#include "Vex/Digits.h"
#include "outfmt/Utf8.h"
#include "vxshow/text/Quoting.h"

#include <algorithm>

namespace vxshow::text {

namespace {

constexpr std::string_view blanks = " \t\n\r";
constexpr std::string_view delimiters = " \t\n\r{}[]:,\"";
constexpr auto none = std::string_view::npos;

/// The length of an escaped surrogate pair, the longest sequence that stands for one character.
constexpr std::size_t longestSequence = 12;

unsigned char byteAt(std::string_view text, std::size_t position) {
    return position < text.size() ? static_cast<unsigned char>(text[position]) : 0;
}

/// The position of the closing quote of the string that `text` starts with, or `none`.
std::size_t closingQuote(std::string_view text) {
    std::size_t at = text.find_first_of("\"\\", 1);
    while (at != none && text[at] == '\\') {
        at = text.find_first_of("\"\\", at + 2);
    }
    return at;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string shownByte(unsigned char byte) {
    return std::string("the byte 0x") + Vex::hexDigits[byte >> 4] + Vex::hexDigits[byte & 0xF];
}

/// The length of the UTF-8 sequence at `position`, or 0 if it is invalid.
std::size_t utf8Length(std::string_view text, std::size_t position) {
    auto const sequence = outfmt::firstUtf8Sequence(text.substr(position));
    return sequence.valid ? sequence.length : 0;
}

/// The code unit that the escape \uXXXX at `position` stands for; nullopt if there is none.
std::optional<unsigned> codeUnit(std::string_view text, std::size_t position) {
    if (byteAt(text, position) != '\\' || byteAt(text, position + 1) != 'u') {
        return std::nullopt;
    }
    unsigned unit = 0;
    for (std::size_t index = 2; index < 6; ++index) {
        auto const digit = Vex::hexValue(static_cast<char>(byteAt(text, position + index)));
        if (digit == Vex::noHexDigit) {
            return std::nullopt;
        }
        unit = unit * 16 + digit;
    }
    return unit;
}

/// The length of the escape at `position`, both halves of a surrogate pair included; 0 if it is
/// invalid.
std::size_t escapeLength(std::string_view text, std::size_t position) {
    constexpr std::string_view letters = "\"\\/bfnrt";
    if (auto const unit = codeUnit(text, position)) {
        if (*unit < 0xD800 || *unit > 0xDFFF) {
            return 6;
        }
        auto const low = codeUnit(text, position + 6);
        return *unit < 0xDC00 && low && *low >= 0xDC00 && *low <= 0xDFFF ? 12 : 0;
    }
    bool const letter =
        position + 1 < text.size() && letters.find(text[position + 1]) != std::string_view::npos;
    return letter ? 2 : 0;
}

std::size_t skipDigits(std::string_view text, std::size_t position) {
    while (position < text.size() && isDigit(text[position])) {
        ++position;
    }
    return position;
}

bool isNumber(std::string_view text) {
    std::size_t at = byteAt(text, 0) == '-' ? 1 : 0;
    std::size_t end = byteAt(text, at) == '0' ? at + 1 : skipDigits(text, at);
    bool wellFormed = end > at;
    if (byteAt(text, end) == '.') {
        at = end + 1;
        end = skipDigits(text, at);
        wellFormed = wellFormed && end > at;
    }
    if (byteAt(text, end) == 'e' || byteAt(text, end) == 'E') {
        at = end + 1;
        at += byteAt(text, at) == '+' || byteAt(text, at) == '-' ? 1U : 0U;
        end = skipDigits(text, at);
        wellFormed = wellFormed && end > at;
    }
    return wellFormed && end == text.size();
}

} // namespace

std::size_t pastBlanks(std::string_view document, std::size_t position) noexcept {
    return std::min(document.find_first_not_of(blanks, position), document.size());
}

std::string_view tokenAt(std::string_view document, std::size_t position) noexcept {
    auto const rest = document.substr(position);
    if (rest[0] == '"') {
        auto const end = closingQuote(rest);
        return rest.substr(0, end == none ? none : end + 1);
    }
    auto const end = rest.find_first_of(delimiters);
    return rest.substr(0, end == 0 ? 1 : end);
}

std::string_view stringContent(std::string_view token) noexcept {
    auto const end = closingQuote(token);
    return token.substr(1, end == none ? none : end - 1);
}

std::optional<SyntaxError> stringError(std::string_view document, std::size_t position) {
    auto const content = stringContent(document.substr(position));
    auto const start = position + 1;
    bool const closed = start + content.size() < document.size();
    for (std::size_t at = 0; at < content.size();) {
        auto const byte = byteAt(content, at);
        if (byte < 0x20) {
            return SyntaxError{start + at, shownByte(byte), "control characters as escapes"};
        }
        bool const escape = byte == '\\';
        auto const length = escape ? escapeLength(content, at) : utf8Length(content, at);
        bool const cutOff = !closed && content.size() - at < longestSequence;
        if (length == 0 && !cutOff) {
            auto const shown = '"' + shownText(content.substr(at, 6)) + '"';
            return escape ? SyntaxError{start + at, shown, "an escape that stands for a character"}
                          : SyntaxError{start + at, shownByte(byte), "UTF-8"};
        }
        at += length == 0 ? content.size() : length;
    }
    if (closed) {
        return std::nullopt;
    }
    return SyntaxError{document.size(), shownToken(document, document.size()),
                       "the quote at the end of a text"};
}

bool isPlainValue(std::string_view token) noexcept {
    return token == "true" || token == "false" || token == "null" || isNumber(token);
}

} // namespace vxshow::text
