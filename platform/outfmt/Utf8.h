#pragma once

#include <cstddef>
#include <string_view>

namespace outfmt {

namespace detail {

/// What a first byte leads. The second byte rules out overlong forms, surrogates and code points
/// that are too large: its range depends on the first byte.
struct Lead {
    std::size_t length; // 0 for a byte that cannot start a sequence
    unsigned char secondFrom = 0x80;
    unsigned char secondTo = 0xBF;
};

constexpr Lead leadOf(unsigned char byte) {
    if (byte < 0x80) {
        return {1};
    }
    if (byte < 0xC2 || byte > 0xF4) {
        return {0};
    }
    if (byte < 0xE0) {
        return {2};
    }
    switch (byte) {
    case 0xE0:
        return {3, 0xA0, 0xBF};
    case 0xED:
        return {3, 0x80, 0x9F};
    case 0xF0:
        return {4, 0x90, 0xBF};
    case 0xF4:
        return {4, 0x80, 0x8F};
    default:
        return {byte < 0xF0 ? 3U : 4U};
    }
}

} // namespace detail

/// The first sequence of a text that should be UTF-8.
struct Utf8Sequence {
    std::size_t length; ///< in bytes, at least 1
    bool valid;
};

/// The first sequence of `bytes` (not empty), by RFC 3629: overlong forms, surrogates and
/// code points above U+10FFFF are not valid.
///
/// The length of an invalid sequence is that of its longest part that could begin a valid
/// one, or 1 (Unicode, section 3.9, "maximal subparts"): the next character is never
/// swallowed, and every decoder makes the same number of replacements.
inline Utf8Sequence firstUtf8Sequence(std::string_view bytes) noexcept {
    auto const lead = detail::leadOf(static_cast<unsigned char>(bytes[0]));
    if (lead.length == 0) {
        return {1, false};
    }
    for (std::size_t index = 1; index < lead.length; ++index) {
        if (index == bytes.size()) {
            return {index, false};
        }
        auto byte = static_cast<unsigned char>(bytes[index]);
        unsigned from = index == 1 ? lead.secondFrom : 0x80;
        unsigned to = index == 1 ? lead.secondTo : 0xBF;
        if (byte < from || byte > to) {
            return {index, false};
        }
    }
    return {lead.length, true};
}

/// Whether all of `text` is valid UTF-8.
inline bool isUtf8(std::string_view text) noexcept {
    while (!text.empty()) {
        auto const sequence = firstUtf8Sequence(text);
        if (!sequence.valid) {
            return false;
        }
        text.remove_prefix(sequence.length);
    }
    return true;
}

} // namespace outfmt
