#pragma once

/// What a terminal obeys instead of showing it: the control characters of ECMA-48.
namespace vxshow::text {

/// One of C0, or DEL.
inline bool isControl(char c) {
    return static_cast<unsigned char>(c) < ' ' || c == 0x7f;
}

/// One of C1, U+0080 to U+009F: in UTF-8 two bytes, `c` behind `before`.
inline bool isLateControl(char before, char c) {
    return before == '\xc2' && static_cast<unsigned char>(c) >= 0x80 &&
           static_cast<unsigned char>(c) < 0xa0;
}

} // namespace vxshow::text
