#include "Nolt/IpAddr.h"

#include "Vex/Errors.h"

#include <array>

namespace Nolt {

using Vex::U32;

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

} // namespace Nolt
