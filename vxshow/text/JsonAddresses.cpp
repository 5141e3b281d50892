#include "vxshow/text/JsonAddresses.h"

#include "Vex/Digits.h"

namespace vxshow::text {

namespace {

template <class Address>
Address required(std::optional<Address> const & address, JsonText const & text,
                 std::string_view expected) {
    if (!address) [[unlikely]] {
        text.refuse(std::string(expected));
    }
    return *address;
}

/// Parses a value; nullopt if it is invalid. The empty text is invalid too, although these types
/// parse it as their empty value.
template <class Value>
std::optional<Value> some(JsonText const & text) {
    auto value = Value::tryFromString(text.text());
    if (value && value->isNone()) {
        value.reset();
    }
    return value;
}

/// Reads an address that is not in its usual form. Not inline, so that reading the others needs no
/// room for an unescaped text.
template <class Address>
[[gnu::noinline]] Address unusual(JsonText const & text, std::string_view expected) {
    return required(Address::tryFromString(text.text()), text, expected);
}

} // namespace

Nolt::EthAddr readMac(JsonText const & text) {
    constexpr auto usual = Nolt::EthAddr::maxTextLength;
    if (text.mayHaveLength(usual)) [[likely]] {
        if (auto const mac = Nolt::EthAddr::tryFromString({text.content(), usual})) [[likely]] {
            return *mac;
        }
    }
    return unusual<Nolt::EthAddr>(text, anEthernetAddress);
}

Nolt::IpAddr readIpv4(JsonText const & text) {
    Nolt::IpAddr address;
    auto const * const end = Nolt::IpAddr::readFrom(text.content(), address);
    if (end && *end == '"') [[likely]] {
        return address;
    }
    return unusual<Nolt::IpAddr>(text, anIpv4Address);
}

Nolt::IpGenAddr readIp(JsonText const & text) {
    Nolt::IpAddr address;
    auto const * const end = Nolt::IpAddr::readFrom(text.content(), address);
    if (end && *end == '"') {
        return address;
    }
    return required(some<Nolt::IpGenAddr>(text), text, anIpAddress);
}

Nolt::IpGenAddrWithMask readIpWithMask(JsonText const & text) {
    return required(some<Nolt::IpGenAddrWithMask>(text), text,
                    "an address with its prefix length such as 10.1.2.3/24 or 2001:db8::1/64");
}

Nolt::IpGenPrefix readPrefix(JsonText const & text) {
    auto const prefix = some<Nolt::IpGenPrefix>(text);
    if (prefix) [[likely]] {
        return *prefix;
    }
    if (auto const value = some<Nolt::IpGenAddrWithMask>(text)) {
        auto const meant = Nolt::IpGenPrefix::covering(value->address(), value->length());
        text.refuse(meant.stringValue() + ", with no bits set beyond the prefix length");
    }
    text.refuse("a prefix such as 10.1.0.0/16 or 2001:db8::/32");
}

Vxlan::Vni readVni(JsonText const & text) {
    auto const number = Vex::readDecimal(text.text(), Vxlan::Vni::max);
    return Vxlan::Vni(required(number, text, "a VNI from 0 to 16777215 in decimal"));
}

} // namespace vxshow::text
