#include "outfmt/JsonText.h"

#include "Vex/Digits.h"
#include "outfmt/Utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace outfmt {
namespace {

constexpr bool isPlain(unsigned char byte) {
    return byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\';
}

constexpr std::uint64_t everyByte(unsigned char byte) {
    return byte * 0x0101010101010101U;
}

/// Whether all eight bytes are plain. A borrow can mark a plain byte only above one that
/// is marked correctly, so the result for the whole word is exact.
constexpr bool allPlain(std::uint64_t word) {
    std::uint64_t quote = word ^ everyByte('"');
    std::uint64_t backslash = word ^ everyByte('\\');
    std::uint64_t marked = word | (word - everyByte(0x20)) | ((quote - everyByte(1)) & ~quote) |
                           ((backslash - everyByte(1)) & ~backslash);
    return (marked & everyByte(0x80)) == 0;
}

/// The number of bytes at the start that can be copied unchanged.
std::size_t plainLength(std::string_view text) noexcept {
    std::size_t length = 0;
    for (std::uint64_t word = 0; text.size() - length >= sizeof word; length += sizeof word) {
        std::memcpy(&word, text.data() + length, sizeof word);
        if (!allPlain(word)) {
            break;
        }
    }
    while (length < text.size() && isPlain(static_cast<unsigned char>(text[length]))) {
        ++length;
    }
    return length;
}

/// Escapes a byte below 0x80 that is not plain.
void appendEscaped(OutputBuffer & buffer, char character) {
    switch (character) {
    case '"':
        return buffer.append("\\\"");
    case '\\':
        return buffer.append("\\\\");
    case '\b':
        return buffer.append("\\b");
    case '\f':
        return buffer.append("\\f");
    case '\n':
        return buffer.append("\\n");
    case '\r':
        return buffer.append("\\r");
    case '\t':
        return buffer.append("\\t");
    default:
        break;
    }
    auto byte = static_cast<unsigned char>(character);
    buffer.append("\\u00");
    buffer.append(Vex::hexDigits[byte >> 4]);
    buffer.append(Vex::hexDigits[byte & 0xF]);
}

} // namespace

bool isPlainJson(std::string_view text) noexcept {
    return plainLength(text) == text.size();
}

void appendJsonString(OutputBuffer & buffer, std::string_view text) {
    buffer.append('"');
    for (;;) {
        std::size_t plain = plainLength(text);
        buffer.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) {
            break;
        }
        Utf8Sequence sequence = firstUtf8Sequence(text);
        if (!sequence.valid) {
            buffer.append("\xEF\xBF\xBD");
        } else if (sequence.length > 1) {
            buffer.append(text.substr(0, sequence.length));
        } else {
            appendEscaped(buffer, text[0]);
        }
        text.remove_prefix(sequence.length);
    }
    buffer.append('"');
}

} // namespace outfmt
