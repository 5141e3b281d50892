#include "Nolt/EthAddr.h"

#include "Vex/Digits.h"
#include "Vex/Errors.h"

namespace [[gnu::visibility("default")]] Nolt {

using Vex::U8;

namespace {

/// The positions of the bytes and the separators in a text form.
template <std::size_t separatorCount>
struct Layout {
    std::array<U8, 6> bytes;
    std::array<U8, separatorCount> separators;
};

constexpr Layout<5> pairs{{0, 3, 6, 9, 12, 15}, {2, 5, 8, 11, 14}};
constexpr Layout<2> quads{{0, 2, 5, 7, 10, 12}, {4, 9}};

template <std::size_t separatorCount>
std::optional<EthAddr> read(std::string_view text, Layout<separatorCount> const & layout,
                            char separator) noexcept {
    for (auto const at : layout.separators) {
        if (text[at] != separator) {
            return std::nullopt;
        }
    }
    Vex::U64 value = 0;
    unsigned seen = 0;
#pragma GCC unroll 6
    for (auto const at : layout.bytes) {
        U8 const high = Vex::hexValue(text[at]);
        U8 const low = Vex::hexValue(text[at + std::size_t{1}]);
        seen |= high | low;
        value = value << 8 | static_cast<U8>(high << 4 | low);
    }
    if ((seen & Vex::noHexDigit) != 0) {
        return std::nullopt;
    }
    return EthAddr::ofValue(value);
}

} // namespace

EthAddr EthAddr::fromString(std::string_view text) {
    if (auto const address = tryFromString(text)) {
        return *address;
    }
    throw Vex::ParseError(text, "an Ethernet address such as 00:1c:73:0a:0b:0c, "
                                "00-1c-73-0a-0b-0c or 001c.730a.0b0c");
}

std::optional<EthAddr> EthAddr::tryFromString(std::string_view text) noexcept {
    if (text.size() == maxTextLength) {
        return read(text, pairs, text[pairs.separators[0]] == '-' ? '-' : ':');
    }
    if (text.size() == maxDisplayLength) {
        return read(text, quads, '.');
    }
    return std::nullopt;
}

Vex::String EthAddr::stringValue() const {
    std::array<char, maxTextLength> text;
    return Vex::String(text.data(), writeTo(text.data()));
}

Vex::String EthAddr::displayString() const {
    std::array<char, maxDisplayLength> text;
    return Vex::String(text.data(), writeDisplayTo(text.data()));
}

} // namespace Nolt
