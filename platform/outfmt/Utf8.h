#pragma once

#include <cstddef>
#include <string_view>

namespace outfmt {

/// The first sequence of a text that should be UTF-8.
struct Utf8Sequence {
    std::size_t length; ///< in bytes, at least 1
    bool valid;
};

/// The first sequence of `bytes` (not empty), by RFC 3629: overlong forms, surrogates and
/// code points above U+10FFFF are not valid.
///
/// The length of an invalid sequence is that of its longest part that could begin a valid
/// one, or 1 (Unicode, section 3.9, "maximal subparts"): the next character is never
/// swallowed, and every decoder makes the same number of replacements.
Utf8Sequence firstUtf8Sequence(std::string_view bytes) noexcept;

} // namespace outfmt
