#include "Nolt/IpGenAddrWithMask.h"

#include "Vex/Digits.h"
#include "Vex/Errors.h"

#include <charconv>

namespace [[gnu::visibility("default")]] Nolt {

void IpGenAddrWithMask::throwTooLong(IpGenAddr const & address, unsigned length) {
    throw Vex::RangeError("prefix length " + std::to_string(length) + " of " +
                          Vex::quoted(address.stringValue()) + " is above " +
                          std::to_string(address.bitLength()));
}

IpGenAddrWithMask IpGenAddrWithMask::fromString(std::string_view text) {
    if (auto const value = tryFromString(text)) {
        return *value;
    }
    throw Vex::ParseError(text, "an address with its prefix length such as 10.1.2.3/24 or "
                                "2001:db8::1/64");
}

std::optional<IpGenAddrWithMask> IpGenAddrWithMask::tryFromString(std::string_view text) noexcept {
    if (text.empty()) {
        return IpGenAddrWithMask();
    }
    auto const slash = text.rfind('/');
    if (slash == std::string_view::npos) {
        return std::nullopt;
    }
    auto const address = IpGenAddr::tryFromString(text.substr(0, slash));
    if (!address || address->isNone()) {
        return std::nullopt;
    }
    auto const length = Vex::readDecimal(text.substr(slash + 1), address->bitLength());
    if (!length) {
        return std::nullopt;
    }
    return IpGenAddrWithMask(*address, *length);
}

Vex::String IpGenAddrWithMask::stringValue() const {
    std::array<char, maxTextLength> text;
    return Vex::String(text.data(), writeTo(text.data()));
}

char * IpGenAddrWithMask::writeTo(char * out) const noexcept {
    if (isNone()) {
        return out;
    }
    char * const end = out + maxTextLength;
    out = address_.writeTo(out);
    *out++ = '/';
    return std::to_chars(out, end, unsigned{length_}).ptr;
}

} // namespace Nolt
