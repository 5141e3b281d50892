#pragma once

#include "Vex/Digits.h"
#include "Vex/Types.h"

#include <array>
#include <cstddef>
#include <cstring>

/// The parts of which the text forms of addresses are made. They are in a header so that
/// they are inlined: a listing writes an address or two per row.
namespace Nolt::detail {

/// Every octet as text, padded with dots. The writer copies whole entries and only then
/// looks at the length, so no branch depends on the number of digits.
inline constexpr std::array<std::array<char, 4>, 256> octets = [] {
    std::array<std::array<char, 4>, 256> texts{};
    for (unsigned octet = 0; octet < 256; ++octet) {
        auto & text = texts[octet];
        text.fill('.');
        std::size_t length = 0;
        for (unsigned const unit : {100U, 10U, 1U}) {
            if (octet >= unit || unit == 1) {
                text[length++] = Vex::hexDigits[octet / unit % 10];
            }
        }
    }
    return texts;
}();

constexpr std::size_t octetLength(Vex::U8 octet) noexcept {
    return 1 + std::size_t{octet >= 10} + std::size_t{octet >= 100};
}

/// Writes the octet and a dot. Always stores four bytes, some of which can be surplus.
inline char * writeOctetAndDot(char * out, Vex::U8 octet) noexcept {
    std::memcpy(out, octets[octet].data(), 4);
    return out + octetLength(octet) + 1;
}

/// Writes the octet without a dot. Always stores three bytes.
inline char * writeOctet(char * out, Vex::U8 octet) noexcept {
    std::memcpy(out, octets[octet].data(), 3);
    return out + octetLength(octet);
}

inline constexpr std::array<std::array<char, 2>, 256> hexPairs = [] {
    std::array<std::array<char, 2>, 256> texts{};
    for (std::size_t byte = 0; byte < 256; ++byte) {
        texts[byte] = {Vex::hexDigits[byte >> 4], Vex::hexDigits[byte & 0xF]};
    }
    return texts;
}();

inline char * writeHexPair(char * out, Vex::U8 byte) noexcept {
    std::memcpy(out, hexPairs[byte].data(), 2);
    return out + 2;
}

} // namespace Nolt::detail
