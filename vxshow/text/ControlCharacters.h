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

/// Whether `character`, one character in UTF-8, has no width or changes the direction of the text
/// around it: U+200B to U+200F, U+202A to U+202E, U+2066 to U+2069 and U+FEFF. With these a name
/// can look like another one.
inline bool isInvisible(std::string_view character) {
    if (character.size() != 3) {
        return false;
    }
    auto const start = character.substr(0, 2);
    auto const last = static_cast<unsigned char>(character[2]);
    if (start == "\xe2\x80") {
        return (last >= 0x8b && last <= 0x8f) || (last >= 0xaa && last <= 0xae);
    }
    return start == "\xe2\x81" ? last >= 0xa6 && last <= 0xa9 : character == "\xef\xbb\xbf";
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
