#pragma once

#include "outfmt/TextValue.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

/// The parser behind Format.h. It runs in the compiler; the program contains only its
/// result, a few offsets and widths per format.
namespace [[gnu::visibility("default")]] outfmt {

/// What is wrong with a format or with its arguments.
enum class FormatError : std::uint8_t {
    none,
    unknownConversion,    ///< an unsupported letter or flag after '%'
    incompleteConversion, ///< the format ends within a conversion
    precisionNotAllowed,  ///< only %s takes a precision
    numberTooLarge,       ///< a width or precision above maxFormatNumber
    formatTooLong,        ///< above maxFormatLength bytes
    missingArgument,
    surplusArgument,
    wrongArgumentType,
};

inline constexpr unsigned maxFormatNumber = 9999;
inline constexpr std::size_t maxFormatLength = 65535;

namespace detail {

enum class ArgumentKind : std::uint8_t { text, signedInteger, unsignedInteger, character, other };

template <class T>
consteval ArgumentKind argumentKind() {
    using Value = std::remove_cv_t<T>;
    if constexpr (TextValue<Value> || (std::convertible_to<Value const &, std::string_view> &&
                                       !std::same_as<Value, std::nullptr_t>)) {
        return ArgumentKind::text;
    } else if constexpr (std::same_as<Value, char>) {
        return ArgumentKind::character;
    } else if constexpr (!std::integral<Value> || std::same_as<Value, bool> ||
                         std::same_as<Value, wchar_t> || std::same_as<Value, char8_t> ||
                         std::same_as<Value, char16_t> || std::same_as<Value, char32_t> ||
                         sizeof(Value) > sizeof(std::int64_t)) {
        return ArgumentKind::other;
    } else {
        return std::signed_integral<Value> ? ArgumentKind::signedInteger
                                           : ArgumentKind::unsignedInteger;
    }
}

/// Text of the format that is printed unchanged, except for "%%".
struct Literal {
    std::uint16_t begin = 0;
    std::uint16_t length = 0;
    bool hasEscapes = false;
};

inline constexpr std::uint16_t noPrecision = UINT16_MAX;

/// One conversion and the literal text before it.
struct Conversion {
    Literal before;
    std::uint16_t width = 0;
    std::uint16_t precision = noPrecision;
    bool leftAligned = false;
};

/// Conversions hold offsets, not views, so that a call with five arguments passes about
/// 80 bytes of constants.
template <std::size_t argumentCount>
struct ParsedFormat {
    std::string_view text;
    std::array<Conversion, argumentCount> conversions{};
    Literal tail;
    FormatError error = FormatError::none;
};

class FormatScanner {
public:
    constexpr explicit FormatScanner(std::string_view text) : text_(text) {}

    constexpr bool atEnd() const { return position_ == text_.size(); }

    constexpr bool next(char wanted) {
        bool found = !atEnd() && text_[position_] == wanted;
        position_ += found ? 1 : 0;
        return found;
    }

    /// The literal text up to the end or the next conversion, whose '%' is skipped too.
    constexpr Literal literal() {
        Literal result;
        result.begin = static_cast<std::uint16_t>(position_);
        while (!atEnd()) {
            if (text_[position_] != '%') {
                ++position_;
            } else if (text_.substr(position_).starts_with("%%")) {
                result.hasEscapes = true;
                position_ += 2;
            } else {
                break;
            }
        }
        result.length = static_cast<std::uint16_t>(position_ - result.begin);
        return result;
    }

    /// The number at the current position, or 0 if there is none. Stops growing once it
    /// is too large.
    constexpr unsigned number() {
        unsigned value = 0;
        while (!atEnd() && text_[position_] >= '0' && text_[position_] <= '9') {
            if (value <= maxFormatNumber) {
                value = value * 10 + static_cast<unsigned>(text_[position_] - '0');
            }
            ++position_;
        }
        return value;
    }

    /// Reads one conversion, after its literal text. `kind` is the kind of its argument.
    constexpr FormatError conversion(Conversion & result, ArgumentKind kind) {
        next('%');
        result.leftAligned = next('-');
        // A leading zero is printf's flag for zero padding, which no table uses.
        if (!atEnd() && text_[position_] == '0') {
            return FormatError::unknownConversion;
        }
        unsigned width = number();
        bool hasPrecision = next('.');
        unsigned precision = hasPrecision ? number() : 0;
        if (width > maxFormatNumber || precision > maxFormatNumber) {
            return FormatError::numberTooLarge;
        }
        result.width = static_cast<std::uint16_t>(width);
        result.precision = hasPrecision ? static_cast<std::uint16_t>(precision) : noPrecision;
        if (atEnd()) {
            return FormatError::incompleteConversion;
        }
        return letter(text_[position_++], hasPrecision, kind);
    }

private:
    static constexpr FormatError letter(char letter, bool hasPrecision, ArgumentKind kind) {
        ArgumentKind wanted = ArgumentKind::other;
        switch (letter) {
        case 's':
            wanted = ArgumentKind::text;
            break;
        case 'd':
            wanted = ArgumentKind::signedInteger;
            break;
        case 'u':
            wanted = ArgumentKind::unsignedInteger;
            break;
        case 'c':
            wanted = ArgumentKind::character;
            break;
        default:
            return FormatError::unknownConversion;
        }
        if (hasPrecision && wanted != ArgumentKind::text) {
            return FormatError::precisionNotAllowed;
        }
        return wanted == kind ? FormatError::none : FormatError::wrongArgumentType;
    }

    std::string_view text_;
    std::size_t position_ = 0;
};

template <std::size_t argumentCount>
constexpr ParsedFormat<argumentCount>
parseFormat(std::string_view text, std::array<ArgumentKind, argumentCount> const & kinds) {
    ParsedFormat<argumentCount> result;
    result.text = text;
    if (text.size() > maxFormatLength) {
        result.error = FormatError::formatTooLong;
        return result;
    }
    FormatScanner scanner(text);
    for (std::size_t index = 0;; ++index) {
        Literal literal = scanner.literal();
        if (scanner.atEnd()) {
            result.tail = literal;
            result.error = index < argumentCount ? FormatError::surplusArgument : FormatError::none;
            return result;
        }
        // A conversion past the last argument is still read, so that a misspelt one is
        // reported as that rather than as a missing argument.
        Conversion surplus;
        Conversion * conversion = &surplus;
        ArgumentKind kind = ArgumentKind::other;
        if constexpr (argumentCount > 0) {
            if (index < argumentCount) {
                conversion = &result.conversions[index];
                kind = kinds[index];
            }
        }
        conversion->before = literal;
        FormatError error = scanner.conversion(*conversion, kind);
        if (error == FormatError::wrongArgumentType && index >= argumentCount) {
            error = FormatError::missingArgument;
        }
        if (error != FormatError::none) {
            result.error = error;
            return result;
        }
    }
}

} // namespace detail
} // namespace outfmt
