#pragma once

#include <string_view>

/// Control characters (ECMA-48): a terminal obeys them instead of showing them.
namespace vxshow::text {

/// Whether `c` is one of C0, U+0000 to U+001F, or DEL.
inline bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == 0x7f;
}

/// Whether `before` and `c`, two bytes of UTF-8, together are one of C1, U+0080 to U+009F.
inline bool isLateControl(char before, char c) {
    return before == '\xc2' && static_cast<unsigned char>(c) >= 0x80 &&
           static_cast<unsigned char>(c) < 0xa0;
}

/// Whether `text`, which is UTF-8, contains a control character.
inline bool hasControls(std::string_view text) {
    char before = '\0';
    for (char const c : text) {
        if (isControl(c) || isLateControl(before, c)) {
            return true;
        }
        before = c;
    }
    return false;
}

} // namespace vxshow::text
