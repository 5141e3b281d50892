#pragma once

#include <string>
#include <string_view>

/// Shows parts of a document in a one-line message on a terminal: as they were written, but with
/// every byte outside printable ASCII as \xNN, since the bytes of a file can be terminal control
/// sequences.
namespace vxshow::text {

/// `text` without quotes, truncated after 60 bytes, with three dots for the rest.
std::string shownText(std::string_view text);

/// `shownText` in double quotes.
std::string shownInQuotes(std::string_view text);

/// The token at `position` of `document`: a string or another plain value as it was written, "an
/// object", "an array", a punctuation mark in single quotes, or "the end of the file".
std::string shownToken(std::string_view document, std::size_t position);

/// The name of a member in a path: unquoted if it is a plain word, otherwise in double quotes.
/// `raw` is the name as written in the document, without its quotes.
std::string shownMember(std::string_view raw);

} // namespace vxshow::text
