#pragma once

#include "outfmt/OutputBuffer.h"

#include <string_view>

namespace outfmt {

/// Whether the text needs no change in a JSON string: ASCII without quotes, backslashes and
/// control characters below U+0020.
bool isPlainJson(std::string_view text) noexcept;

/// Writes `text` as a JSON string (RFC 8259, section 7), quotes included.
///
/// Whatever the bytes are, the result is well formed: quotes, backslashes and control
/// characters below U+0020 are escaped, with the short forms where they exist, and
/// invalid UTF-8 becomes U+FFFD, one for each maximal subpart. DEL, U+2028 and everything
/// else are written unchanged.
void appendJsonString(OutputBuffer & buffer, std::string_view text);

} // namespace outfmt
