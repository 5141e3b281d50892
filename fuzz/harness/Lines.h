#pragma once

#include "fuzz/harness/Check.h"

#include <algorithm>
#include <string_view>

namespace fuzz {

/// Whether `text` is one line of printable ASCII, as messages are.
inline bool isOneLine(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// Checks that a refusal or a remark is one line of printable ASCII.
inline void checkLine(std::string_view text) {
    check(isOneLine(text), "a message is not one line of printable ASCII");
}

} // namespace fuzz
