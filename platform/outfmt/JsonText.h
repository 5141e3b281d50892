#pragma once

#include "outfmt/OutputBuffer.h"

#include <string_view>

namespace outfmt {

/// Whether a JSON string has the text as it is: ASCII without quotes, backslashes and control
/// characters below U+0020.
bool isPlainJson(std::string_view text) noexcept;

/// Writes `text` as a JSON string (RFC 8259, section 7), quotes included.
///
/// Whatever the bytes are, the result is well formed: quotes, backslashes and control
/// characters below U+0020 are escaped, by the short forms where there are such, and what
/// is not UTF-8 becomes U+FFFD, one for each maximal subpart. DEL, U+2028 and everything
/// else pass as they are.
void appendJsonString(OutputBuffer & buffer, std::string_view text);

} // namespace outfmt
