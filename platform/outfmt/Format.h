#pragma once

#include "outfmt/FormatParser.h"

#include <array>
#include <concepts>
#include <string_view>

/// printf formats, parsed and checked at compile time.
///
/// A format that is not a constant, or whose arguments do not fit it, does not compile:
/// text from the network can never be a format, and at run time nothing is parsed and no
/// varargs are read. Supported are the conversions that tables need:
///
///     %s   text: anything that converts to std::string_view, and every TextValue
///     %d   a signed integer of up to 64 bits
///     %u   an unsigned integer of up to 64 bits
///     %c   a char
///     %%   a percent sign
///
/// with the flag '-', a width, and for %s a precision, counted in bytes as in printf.
/// bool and the character types are not integers here.
namespace [[gnu::visibility("default")]] outfmt {

namespace detail {

// Never defined: a bad format calls one of them where a constant expression is required,
// so that the compiler's message names the error.
void formatHasUnknownConversion();
void formatHasIncompleteConversion();
void formatHasPrecisionWhereNoneIsAllowed();
void formatHasTooLargeNumber();
void formatIsTooLong();
void formatIsMissingAnArgument();
void formatHasSurplusArgument();
void formatArgumentHasWrongType();

constexpr void refuse(FormatError error) {
    switch (error) {
    case FormatError::none:
        return;
    case FormatError::unknownConversion:
        return formatHasUnknownConversion();
    case FormatError::incompleteConversion:
        return formatHasIncompleteConversion();
    case FormatError::precisionNotAllowed:
        return formatHasPrecisionWhereNoneIsAllowed();
    case FormatError::numberTooLarge:
        return formatHasTooLargeNumber();
    case FormatError::formatTooLong:
        return formatIsTooLong();
    case FormatError::missingArgument:
        return formatIsMissingAnArgument();
    case FormatError::surplusArgument:
        return formatHasSurplusArgument();
    case FormatError::wrongArgumentType:
        return formatArgumentHasWrongType();
    }
}

} // namespace detail

/// The first error, from the left, in `text` as a format for arguments of these types.
template <class... Args>
constexpr FormatError checkFormat(std::string_view text) {
    constexpr std::array<detail::ArgumentKind, sizeof...(Args)> kinds{
        detail::argumentKind<Args>()...};
    return detail::parseFormat(text, kinds).error;
}

/// A format for arguments of the types Args. Converts only from constant text, and does
/// not compile if checkFormat() finds an error. The text must live as long as the
/// program; a literal does.
template <class... Args>
class FormatString {
public:
    template <std::convertible_to<std::string_view> Text>
    consteval FormatString(Text const & text)
        : parsed_(detail::parseFormat(text, std::array<detail::ArgumentKind, sizeof...(Args)>{
                                                detail::argumentKind<Args>()...})) {
        detail::refuse(parsed_.error);
    }

    constexpr detail::ParsedFormat<sizeof...(Args)> const & parsed() const { return parsed_; }

private:
    detail::ParsedFormat<sizeof...(Args)> parsed_;
};

} // namespace outfmt
