#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The tokens of JSON (RFC 8259), one at a time, for reporting what is wrong with a document. Speed
/// does not matter here; finding every wrong byte does.
namespace vxshow::text {

/// A place where a document is not JSON.
struct SyntaxError {
    std::size_t position;
    std::string found;
    std::string expected;
};

/// Where the whitespace that starts at `position` ends.
std::size_t pastBlanks(std::string_view document, std::size_t position) noexcept;

/// The token that starts at `position`, which must be inside the document: a punctuation mark, a
/// string with its quotes (up to the end of the document if it is not closed), or all bytes up to
/// the next blank, mark or quote.
std::string_view tokenAt(std::string_view document, std::size_t position) noexcept;

/// What is between the quotes of a string token.
std::string_view stringContent(std::string_view token) noexcept;

/// What is wrong with the string that starts at `position`: it is not closed, or it contains a
/// control character (section 7), an escape that does not exist or that stands for half a
/// character, or a byte sequence that is not UTF-8 (RFC 3629). Nullopt if nothing is wrong.
std::optional<SyntaxError> stringError(std::string_view document, std::size_t position);

/// Whether `token` is a number (section 6), true, false or null.
bool isPlainValue(std::string_view token) noexcept;

} // namespace vxshow::text
