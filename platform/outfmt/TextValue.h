#pragma once

#include <concepts>
#include <cstddef>

namespace [[gnu::visibility("default")]] outfmt {

/// A value that writes its own text, so that a table of millions of addresses is printed
/// without a string per cell.
///
/// `writeTo(to)` writes the text at `to`, without a terminating NUL, and returns the end
/// of what it wrote; it never writes more than `maxTextLength` bytes.
template <class T>
concept TextValue = requires(T const & value, char * to) {
    { value.writeTo(to) }
    noexcept->std::same_as<char *>;
    { T::maxTextLength } -> std::convertible_to<std::size_t>;
};

/// Whether the text of a value is always ASCII without anything that JSON escapes. A type
/// says so with a member `textIsPlain`; the texts of other types are checked.
template <TextValue Value>
constexpr bool textIsPlain() {
    if constexpr (requires { Value::textIsPlain; }) {
        return Value::textIsPlain;
    } else {
        return false;
    }
}

} // namespace outfmt
