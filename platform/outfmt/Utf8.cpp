#include "outfmt/Utf8.h"

namespace outfmt {
namespace {

/// The second byte rules out overlong forms, surrogates and code points that are too
/// large: its range depends on the first byte.
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

} // namespace

Utf8Sequence firstUtf8Sequence(std::string_view bytes) noexcept {
    Lead lead = leadOf(static_cast<unsigned char>(bytes[0]));
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

} // namespace outfmt
