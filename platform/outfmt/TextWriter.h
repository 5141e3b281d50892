#pragma once

#include "outfmt/Format.h"
#include "outfmt/OutputBuffer.h"
#include "outfmt/ReservedRoom.h"

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <string_view>
#include <utility>

/// Formats one text line directly into the output: the arguments are filled into the format
/// that Format.h parsed at compile time. `Output` is an OutputBuffer or a LimitedOutput, or,
/// for a line that cannot exceed what a buffer reserves, the room reserved there: a table
/// row then asks for room once instead of once per cell. Everything is forced inline into
/// the caller: there the format is a constant, and only copies of known lengths are left of
/// it.
namespace outfmt::detail {

/// The most bytes that an argument can touch, including bytes that are cut or filled.
inline std::size_t mostBytes(Conversion const & conversion, std::string_view text) {
    return std::max<std::size_t>(conversion.width,
                                 std::min<std::size_t>(text.size(), conversion.precision));
}

template <TextValue Value>
std::size_t mostBytes(Conversion const & conversion, Value const & /* value */) {
    constexpr std::size_t longest = Value::maxTextLength;
    return std::max<std::size_t>(conversion.width, longest);
}

template <std::integral Number>
std::size_t mostBytes(Conversion const & conversion, Number /* number */) {
    constexpr std::size_t longest = 20; // -9223372036854775808
    return std::max<std::size_t>(conversion.width, longest);
}

template <class Output>
[[gnu::always_inline]] inline void putLiteral(Output & output, std::string_view format,
                                              Literal literal) {
    std::string_view text(format.data() + literal.begin, literal.length);
    if (literal.hasEscapes) {
        for (std::size_t at = text.find("%%"); at != text.npos; at = text.find("%%")) {
            output.append(text.substr(0, at + 1));
            text.remove_prefix(at + 2);
        }
    }
    output.append(text);
}

template <class Output>
[[gnu::always_inline]] inline void putPadded(Output & output, Conversion const & conversion,
                                             std::string_view text) {
    std::size_t padding = conversion.width > text.size() ? conversion.width - text.size() : 0;
    if (padding == 0) {
        output.append(text);
    } else if (conversion.leftAligned) {
        output.append(text);
        output.fill(' ', padding);
    } else {
        output.fill(' ', padding);
        output.append(text);
    }
}

template <class Output>
[[gnu::always_inline]] inline void putArgument(Output & output, Conversion const & conversion,
                                               std::string_view text) {
    putPadded(output, conversion,
              conversion.precision == noPrecision ? text : text.substr(0, conversion.precision));
}

template <class Output, TextValue Value>
[[gnu::always_inline]] inline void putArgument(Output & output, Conversion const & conversion,
                                               Value const & value) {
    static_assert(Value::maxTextLength <= OutputBuffer::maxReserve);
    if (!conversion.leftAligned && conversion.width > 0) {
        // The padding comes first, and its length is known only after the text is.
        char text[Value::maxTextLength];
        auto length = static_cast<std::size_t>(value.writeTo(text) - text);
        return putArgument(output, conversion, std::string_view(text, length));
    }
    char * text = output.reserve(Value::maxTextLength);
    auto length = static_cast<std::size_t>(value.writeTo(text) - text);
    length = std::min<std::size_t>(length, conversion.precision);
    output.commit(length);
    if (length < conversion.width) {
        output.fill(' ', conversion.width - length);
    }
}

template <std::integral Number>
[[gnu::always_inline]] inline std::size_t decimalLength(Number number) {
    std::size_t length = number < 0 ? 2 : 1;
    for (Number left = number / 10; left != 0; left /= 10) {
        ++length;
    }
    return length;
}

template <class Output, std::integral Number>
[[gnu::always_inline]] inline void putArgument(Output & output, Conversion const & conversion,
                                               Number number) {
    if constexpr (std::same_as<Number, char>) {
        putPadded(output, conversion, {&number, 1});
    } else {
        std::size_t const length = decimalLength(number);
        std::size_t const padding = conversion.width > length ? conversion.width - length : 0;
        if (!conversion.leftAligned) {
            output.fill(' ', padding);
        }
        char * digits = output.reserve(length);
        std::to_chars(digits, digits + length, number);
        output.commit(length);
        if (conversion.leftAligned) {
            output.fill(' ', padding);
        }
    }
}

/// Writes `format` with `args` piece by piece.
template <class Output, std::size_t... index, class... Args>
[[gnu::always_inline]] inline void
putPieces(Output & output, ParsedFormat<sizeof...(Args)> const & format,
          std::index_sequence<index...> /* of the arguments */, Args const &... args) {
    ((putLiteral(output, format.text, format.conversions[index].before),
      putArgument(output, format.conversions[index], args)),
     ...);
    putLiteral(output, format.text, format.tail);
}

/// Writes `format` with `args`, which were checked against each other at compile time.
template <class Output, class... Args>
[[gnu::always_inline]] inline void
putFormatted(Output & output, ParsedFormat<sizeof...(Args)> const & format, Args const &... args) {
    std::size_t most = format.text.size();
    [[maybe_unused]] auto const * conversion = format.conversions.data();
    ((most += mostBytes(*conversion++, args)), ...);
    if (most > OutputBuffer::maxReserve) [[unlikely]] {
        return putPieces(output, format, std::index_sequence_for<Args...>{}, args...);
    }
    char * const begin = output.reserve(most);
    ReservedRoom room(begin);
    putPieces(room, format, std::index_sequence_for<Args...>{}, args...);
    output.commit(static_cast<std::size_t>(room.end() - begin));
}

} // namespace outfmt::detail
