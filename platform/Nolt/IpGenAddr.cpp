#include "Nolt/IpGenAddr.h"

#include "Nolt/Ipv6Text.h"
#include "Vex/Errors.h"

namespace [[gnu::visibility("default")]] Nolt {

IpGenAddr IpGenAddr::fromString(std::string_view text) {
    if (auto const address = tryFromString(text)) {
        return *address;
    }
    throw Vex::ParseError(text, "an IPv4 or IPv6 address such as 10.0.0.1 or 2001:db8::1");
}

std::optional<IpGenAddr> IpGenAddr::tryFromString(std::string_view text) noexcept {
    if (text.empty()) {
        return IpGenAddr();
    }
    if (auto const address = IpAddr::tryFromString(text)) {
        return IpGenAddr(*address);
    }
    if (auto const halves = readIpv6(text)) {
        return ipv6(halves->high, halves->low);
    }
    return std::nullopt;
}

Vex::String IpGenAddr::stringValue() const {
    std::array<char, maxTextLength> text;
    return Vex::String(text.data(), writeTo(text.data()));
}

char * IpGenAddr::writeTo(char * out) const noexcept {
    switch (family_) {
    case Family::none:
        break;
    case Family::ipv4:
        return ipv4().writeTo(out);
    case Family::ipv6:
        return writeIpv6(out, {high_, low_});
    }
    return out;
}

} // namespace Nolt
