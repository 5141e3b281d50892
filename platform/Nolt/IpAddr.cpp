#include "Nolt/IpAddr.h"

#include "Vex/Digits.h"
#include "Vex/Errors.h"

#include <array>
#include <cstring>

namespace Nolt {

using Vex::U32;
using Vex::U8;

namespace {

/// Every octet as text, filled up with dots. The writer copies whole entries and only
/// then looks at the length: no branch depends on the number of digits.
constexpr std::array<std::array<char, 4>, 256> octets = [] {
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

constexpr std::size_t octetLength(U8 octet) noexcept {
    return 1 + std::size_t{octet >= 10} + std::size_t{octet >= 100};
}

} // namespace

IpAddr IpAddr::fromString(std::string_view text) {
    if (auto const address = tryFromString(text)) {
        return *address;
    }
    throw Vex::ParseError(text, "an IPv4 address such as 10.0.0.1");
}

std::optional<IpAddr> IpAddr::tryFromString(std::string_view text) noexcept {
    U32 value = 0;
    std::size_t at = 0;
    for (unsigned index = 0; index < 4; ++index) {
        if (index > 0) {
            if (at == text.size() || text[at] != '.') {
                return std::nullopt;
            }
            ++at;
        }
        std::size_t const start = at;
        U32 octet = 0;
        while (at < text.size() && at < start + 3 && text[at] >= '0' && text[at] <= '9') {
            octet = octet * 10 + static_cast<U32>(text[at] - '0');
            ++at;
        }
        bool const leadingZero = at > start + 1 && text[start] == '0';
        if (at == start || leadingZero || octet > 255) {
            return std::nullopt;
        }
        value = value << 8 | octet;
    }
    if (at != text.size()) {
        return std::nullopt;
    }
    return IpAddr(value);
}

Vex::String IpAddr::stringValue() const {
    std::array<char, maxTextLength> text;
    return Vex::String(text.data(), writeTo(text.data()));
}

char * IpAddr::writeTo(char * out) const noexcept {
    for (unsigned shift = 24; shift > 0; shift -= 8) {
        auto const octet = static_cast<U8>(value_ >> shift);
        std::memcpy(out, octets[octet].data(), 4);
        out += octetLength(octet) + 1;
    }
    auto const last = static_cast<U8>(value_);
    std::memcpy(out, octets[last].data(), 3);
    return out + octetLength(last);
}

} // namespace Nolt
