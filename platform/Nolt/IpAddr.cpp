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

/// Reads the quad at `at` and returns where it ends, or null when there is none. `isEnd(at)`
/// tells where there is nothing more to look at.
template <class IsEnd>
char const * readQuad(char const * at, IsEnd isEnd, IpAddr & into) noexcept {
    auto const digitAt = [&](char const * place) {
        constexpr U32 none = 10;
        return isEnd(place) ? none : static_cast<U32>(*place) - '0';
    };
    U32 value = 0;
    for (unsigned index = 0; index < 4; ++index) {
        if (index > 0 && (isEnd(at) || *at++ != '.')) {
            return nullptr;
        }
        U32 octet = digitAt(at);
        if (octet > 9) {
            return nullptr;
        }
        ++at;
        for (U32 digit = digitAt(at); digit <= 9; digit = digitAt(++at)) {
            bool const leadingZero = octet == 0;
            octet = octet * 10 + digit;
            if (leadingZero || octet > 255) {
                return nullptr;
            }
        }
        value = value << 8 | octet;
    }
    into = IpAddr(value);
    return at;
}

} // namespace

IpAddr IpAddr::fromString(std::string_view text) {
    if (auto const address = tryFromString(text)) {
        return *address;
    }
    throw Vex::ParseError(text, "an IPv4 address such as 10.0.0.1");
}

std::optional<IpAddr> IpAddr::tryFromString(std::string_view text) noexcept {
    IpAddr address;
    auto const * const end = text.data() + text.size();
    if (readQuad(
            text.data(), [&](char const * at) { return at == end; }, address) != end) {
        return std::nullopt;
    }
    return address;
}

char const * IpAddr::readFrom(char const * text, IpAddr & into) noexcept {
    return readQuad(
        text, [](char const * /* at */) { return false; }, into);
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
