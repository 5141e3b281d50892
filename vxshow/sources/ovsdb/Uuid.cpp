#include "vxshow/sources/ovsdb/Uuid.h"

#include <array>

namespace vxshow::sources::ovsdb {

namespace {

constexpr std::size_t uuidLength = 36;
constexpr Vex::U8 noDigit = 0xFF;

constexpr std::array<Vex::U8, 256> digitValues() {
    std::array<Vex::U8, 256> values{};
    values.fill(noDigit);
    for (Vex::U8 digit = 0; digit < 10; ++digit) {
        values[static_cast<Vex::U8>('0' + digit)] = digit;
    }
    for (Vex::U8 digit = 10; digit < 16; ++digit) {
        values[static_cast<Vex::U8>('a' + digit - 10)] = digit;
    }
    return values;
}

/// The number in a group of digits. A character that is not a digit sets a bit of `bad` above
/// those of digits; each row of an answer has two identities, so this does not branch.
template <std::size_t count>
Vex::U64 group(char const * digits, unsigned & bad) {
    static constexpr std::array<Vex::U8, 256> values = digitValues();
    Vex::U64 number = 0;
    for (std::size_t index = 0; index < count; ++index) {
        Vex::U8 const value = values[static_cast<unsigned char>(digits[index])];
        bad |= value;
        number = number << 4 | (value & 0xFU);
    }
    return number;
}

} // namespace

std::optional<Uuid> readUuid(std::string_view text) noexcept {
    char const * const at = text.data();
    if (text.size() != uuidLength || at[8] != '-' || at[13] != '-' || at[18] != '-' ||
        at[23] != '-') {
        return std::nullopt;
    }
    unsigned bad = 0;
    Uuid uuid;
    uuid.high = group<8>(at, bad) << 32 | group<4>(at + 9, bad) << 16 | group<4>(at + 14, bad);
    uuid.low = group<4>(at + 19, bad) << 48 | group<12>(at + 24, bad);
    return bad > 0xF ? std::nullopt : std::optional(uuid);
}

std::string textOf(Uuid const & uuid) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (unsigned index = 0; index < 32; ++index) {
        if (index == 8 || index == 12 || index == 16 || index == 20) {
            text.push_back('-');
        }
        auto const half = index < 16 ? uuid.high : uuid.low;
        text.push_back(digits[half >> (60 - index % 16 * 4) & 0xF]);
    }
    return text;
}

} // namespace vxshow::sources::ovsdb
