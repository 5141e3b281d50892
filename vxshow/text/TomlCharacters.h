#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vxshow::text {

/// The position of the first byte of `document`, a TOML document, that is not ASCII although it is
/// in neither a string nor a comment, or although a backslash is before it. TOML 1.0 allows such
/// bytes only in strings, in comments, and in a byte order mark at the start. Returns nullopt if
/// all is ASCII there, up to the first unterminated string. A quote inside a bare value, as in
/// `4'x'`, opens no string.
///
/// The library that parses TOML has undefined behaviour where it tests whether such a character is
/// a blank. It also does so for the first character after a backslash at a line end, which TOML
/// allows to be any; it is reported as well.
std::optional<std::size_t> misplacedNonAscii(std::string_view document) noexcept;

} // namespace vxshow::text
