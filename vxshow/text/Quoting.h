#pragma once

#include <string>
#include <string_view>

/// Parts of a document as they may stand in a message of one line on a terminal: as they
/// were written, but with every byte outside printable ASCII as \xNN, since bytes of a
/// file can be a terminal's control sequences.
namespace vxshow::text {

/// `text` without quotes, cut after 60 bytes, with three dots for the rest.
std::string shownText(std::string_view text);

/// `shownText` in double quotes.
std::string shownInQuotes(std::string_view text);

/// What begins at `position` of `document`: a string or another plain value as it stands
/// there, "an object", "an array", a mark in single quotes, or "the end of the file".
std::string shownToken(std::string_view document, std::size_t position);

/// The name of a member in a path: as it is when it is a plain word, else in the quotes in
/// which it stands in the document. `raw` is what stands between those.
std::string shownMember(std::string_view raw);

} // namespace vxshow::text
