#include "Nolt/IpAddr.h"

#include "Vex/Errors.h"

#include <array>

namespace [[gnu::visibility("default")]] Nolt {

using Vex::U32;

namespace {

/// Reads the quad at `at` and returns where it ends, or null if there is none. `isEnd(at)`
/// is true where there is nothing more to read.
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
    auto const isEnd = [end](char const * at) { return at == end; };
    auto const * const quadEnd = readQuad(text.data(), isEnd, address);
    if (!quadEnd || quadEnd != end) {
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

} // namespace Nolt
