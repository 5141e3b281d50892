#pragma once

#include <concepts>
#include <cstddef>

namespace [[gnu::visibility("default")]] outfmt {

/// A value that writes its own text, so that a table of millions of addresses is printed
/// without a string per cell.
///
/// `writeTo(to)` writes the text at `to`, without a terminating NUL, and returns the end
/// of what it wrote; `maxTextLength` is the most bytes that it ever writes.
template <class T>
concept TextValue = requires(T const & value, char * to) {
    { value.writeTo(to) }
    noexcept->std::same_as<char *>;
    { T::maxTextLength } -> std::convertible_to<std::size_t>;
};

/// Whether the text of a value is always ASCII without anything that JSON escapes. A type says
/// so by a member `textIsPlain`; the texts of the others are looked through.
template <TextValue Value>
constexpr bool textIsPlain() {
    if constexpr (requires { Value::textIsPlain; }) {
        return Value::textIsPlain;
    } else {
        return false;
    }
}

} // namespace outfmt
