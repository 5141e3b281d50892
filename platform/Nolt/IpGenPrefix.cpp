#include "Nolt/IpGenPrefix.h"

#include "Vex/Errors.h"

namespace [[gnu::visibility("default")]] Nolt {

namespace {

Vex::String likelyMeant(IpGenAddrWithMask const & value) {
    return IpGenPrefix::covering(value.address(), value.length()).stringValue();
}

} // namespace

void IpGenPrefix::throwHostBits(IpGenAddrWithMask const & value) {
    throw Vex::RangeError(value.stringValue() + " has bits set beyond its prefix length, unlike " +
                          likelyMeant(value));
}

IpGenPrefix IpGenPrefix::fromString(std::string_view text) {
    if (auto const prefix = tryFromString(text)) {
        return *prefix;
    }
    if (auto const value = IpGenAddrWithMask::tryFromString(text)) {
        throw Vex::ParseError(text,
                              likelyMeant(*value) + ", with no bits set beyond the prefix length");
    }
    throw Vex::ParseError(text, "a prefix such as 10.1.0.0/16 or 2001:db8::/32");
}

std::optional<IpGenPrefix> IpGenPrefix::tryFromString(std::string_view text) noexcept {
    auto const value = IpGenAddrWithMask::tryFromString(text);
    if (!value || value->address().masked(value->length()) != value->address()) {
        return std::nullopt;
    }
    return IpGenPrefix(value->address(), value->length());
}

Vex::String IpGenPrefix::stringValue() const {
    return value_.stringValue();
}

char * IpGenPrefix::writeTo(char * out) const noexcept {
    return value_.writeTo(out);
}

} // namespace Nolt
