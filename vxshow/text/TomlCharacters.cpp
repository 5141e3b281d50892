#include "vxshow/text/TomlCharacters.h"

#include <algorithm>
#include <cstdint>

namespace vxshow::text {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

/// The position of the character that ends the escape sequence at `at`. That of a backslash at a
/// line end skips blanks and line ends; the character after them is the one that matters.
std::size_t escapedCharacter(std::string_view document, std::size_t at) {
    auto const end = std::min(document.find_first_not_of(" \t\r\n", at + 1), document.size());
    auto const between = document.substr(at + 1, end - at - 1);
    return between.find('\n') == std::string_view::npos ? at + 1 : end;
}

/// Whether there is a character at `at`, and it is not ASCII.
bool isOutsideAscii(std::string_view document, std::size_t at) {
    return at < document.size() && !isAscii(document[at]);
}

/// The position after the string of one line that starts at `at`, or of the first character in it
/// that is escaped and not ASCII; npos if the string has no end.
std::size_t afterString(std::string_view document, std::size_t at) {
    char const quote = document[at];
    for (++at; at < document.size() && document[at] != '\n'; ++at) {
        if (document[at] == quote) {
            return at + 1;
        }
        if (quote == '"' && document[at] == '\\') {
            if (auto const next = escapedCharacter(document, at); isOutsideAscii(document, next)) {
                return next;
            }
            ++at;
        }
    }
    return std::string_view::npos;
}

/// As `afterString`, for a string in three quotes.
std::size_t afterLongString(std::string_view document, std::size_t at) {
    char const quote = document[at];
    std::size_t quotes = 0;
    for (at += 3; at < document.size(); ++at) {
        quotes = document[at] == quote ? quotes + 1 : 0;
        if (quotes == 3) {
            // One or two quotes can stand before the three that end it.
            auto const end = std::min(document.find_first_not_of(quote, at), document.size());
            return std::min(end, at + 3);
        }
        if (quote == '"' && document[at] == '\\') {
            if (auto const next = escapedCharacter(document, at); isOutsideAscii(document, next)) {
                return next;
            }
            ++at;
        }
    }
    return std::string_view::npos;
}

bool isLongString(std::string_view document, std::size_t at) {
    return document.size() - at >= 3 && document[at + 1] == document[at] &&
           document[at + 2] == document[at];
}

/// As `afterString`, for a string of either kind.
std::size_t afterAnyString(std::string_view document, std::size_t at) {
    return isLongString(document, at) ? afterLongString(document, at) : afterString(document, at);
}

/// Whether a key or a value is next, from the marks outside of strings and comments.
class Position {
public:
    bool isValue() const noexcept { return value_; }

    void pass(char mark) noexcept {
        switch (mark) {
        case '=':
            value_ = true;
            break;
        case '\n':
            value_ = value_ && depth_ > 0;
            break;
        case '[': // in a key it is a header
        case '{':
            if (value_) {
                open(mark == '{');
            }
            break;
        case ']':
        case '}':
            close();
            break;
        case ',':
            value_ = depth_ > 0 && !inTable();
            break;
        default:
            break;
        }
    }

private:
    bool inTable() const noexcept { return (tables_ & 1U) != 0; }

    void open(bool table) noexcept {
        tables_ = tables_ << 1U | (table ? 1U : 0U);
        ++depth_;
        value_ = !table;
    }

    void close() noexcept {
        if (depth_ > 0) {
            tables_ >>= 1U;
            --depth_;
            value_ = true;
        }
    }

    bool value_ = false;
    std::size_t depth_ = 0;
    /// Which of the open brackets are tables, the innermost in the lowest bit: of the last 64, but
    /// the library takes no more than a few.
    std::uint64_t tables_ = 0;
};

/// The position after the bare value that starts at `at`, such as a number, or of the first
/// character in it that is not ASCII. A quote inside it opens no string.
std::size_t afterBareValue(std::string_view document, std::size_t at) {
    constexpr std::string_view ends = " \t\r\n]},#";
    while (at < document.size() && isAscii(document[at]) &&
           ends.find(document[at]) == std::string_view::npos) {
        ++at;
    }
    return at;
}

bool startsBareValue(char c) {
    return std::string_view(" \t\r\n[]{},=").find(c) == std::string_view::npos;
}

} // namespace

std::optional<std::size_t> misplacedNonAscii(std::string_view document) noexcept {
    Position position;
    for (std::size_t at = document.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
         at < document.size();) {
        char const c = document[at];
        if (!isAscii(c)) {
            return at;
        }
        if (c == '#') {
            at = document.find('\n', at);
        } else if (c == '"' || c == '\'') {
            at = afterAnyString(document, at);
        } else if (position.isValue() && startsBareValue(c)) {
            at = afterBareValue(document, at);
        } else {
            position.pass(c);
            ++at;
        }
    }
    return std::nullopt;
}

} // namespace vxshow::text
