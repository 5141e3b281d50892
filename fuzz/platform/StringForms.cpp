#include "Bridging/VlanIdOrNone.h"
#include "Nolt/EthAddr.h"
#include "Nolt/IpGenAddr.h"
#include "Nolt/IpGenPrefix.h"
#include "Quay/Seqno32.h"
#include "Vex/Errors.h"
#include "Vxlan/VniOrNone.h"
#include "fuzz/Targets.h"
#include "fuzz/harness/Check.h"
#include "fuzz/harness/Input.h"

#include <array>

/// The text forms of the value types: what is read, printed and read again is the same value, and
/// the ways to read and to print agree.
namespace fuzz {

namespace {

bool isPrintable(std::string_view text) {
    return text.find_first_not_of("0123456789abcdefABCDEF.:/-") == std::string_view::npos;
}

/// What `write` writes into a buffer of exactly the length that the type promises.
template <std::size_t length, class Write>
std::string_view written(std::array<char, length> & room, Write && write) {
    char * const end = write(room.data());
    return {room.data(), static_cast<std::size_t>(end - room.data())};
}

template <class T>
void refusesInOneLine(std::string_view text) {
    try {
        T::fromString(text);
        check(false, "fromString reads what tryFromString refuses");
    } catch (Vex::Error const & error) {
        for (char const * at = error.what(); *at; ++at) {
            check(*at >= ' ' && *at <= '~', "an error message is not one line of printable ASCII");
        }
    }
}

template <class T>
void roundTrip(std::string_view text) {
    auto const value = T::tryFromString(text);
    if (!value) {
        // Raising an error takes longer than all else here: one length in eight will do.
        if (text.size() % 8 == 7) {
            refusesInOneLine<T>(text);
        }
        return;
    }
    check(T::fromString(text) == *value, "fromString differs from tryFromString");
    auto const printed = value->stringValue();
    std::array<char, T::maxTextLength> room;
    check(written(room, [&](char * out) { return value->writeTo(out); }) == printed,
          "writeTo differs from stringValue");
    check(isPrintable(printed), "a printed value has other characters than those of values");
    auto const again = T::tryFromString(printed);
    check(again == *value, "a printed value is read as another one");
    check((*again <=> *value) == 0, "equal values are not ordered as equal");
    check(std::hash<T>()(*again) == std::hash<T>()(*value), "equal values have different hashes");
}

void displayForm(std::string_view text) {
    if (auto const mac = Nolt::EthAddr::tryFromString(text)) {
        check(Nolt::EthAddr::tryFromString(mac->displayString()) == *mac,
              "a MAC address in groups of four digits is read as another one");
        check(Nolt::EthAddr(mac->bytes()) == *mac, "a MAC address differs from its bytes");
    }
}

void dottedForm(std::string_view text) {
    if (auto const vni = Vxlan::Vni::tryFromString(text)) {
        check(Vxlan::Vni::tryFromString(vni->stringValue(true)) == *vni,
              "a VNI with dots is read as another one");
        check(Vxlan::VniOrNone::tryFromString(text) == Vxlan::VniOrNone(*vni),
              "VniOrNone does not read a VNI");
    }
}

void addresses(std::string_view text) {
    auto const v4 = Nolt::IpAddr::tryFromString(text);
    auto const any = Nolt::IpGenAddr::tryFromString(text);
    check(!v4 || any == Nolt::IpGenAddr(*v4), "IpGenAddr does not read an IPv4 address");
    check(!any || (any->family() == Nolt::Family::ipv4) == v4.has_value(),
          "IpAddr does not read an IPv4 address of IpGenAddr");
}

void prefixes(std::string_view text) {
    auto const prefix = Nolt::IpGenPrefix::tryFromString(text);
    auto const address = Nolt::IpGenAddrWithMask::tryFromString(text);
    check(!prefix || (address && address->address() == prefix->address() &&
                      address->length() == prefix->length()),
          "a prefix is not read as an address with a mask");
    if (address) {
        auto const network = Nolt::IpGenPrefix::covering(address->address(), address->length());
        check(prefix.has_value() == (network.address() == address->address()),
              "a prefix is read with host bits, or refused without");
        check(network.isNone() || network.overlaps(network), "a prefix does not overlap itself");
    }
}

/// IPv4 addresses inside a longer text, as in a JSON document.
void addressAtTheStart(std::string_view text) {
    std::string const quoted = std::string(text) + '"';
    Nolt::IpAddr read;
    char const * const end = Nolt::IpAddr::readFrom(quoted.c_str(), read);
    if (end) {
        auto const length = static_cast<std::size_t>(end - quoted.c_str());
        check(Nolt::IpAddr::tryFromString(text.substr(0, length)) == read,
              "readFrom takes a text for an address that tryFromString does not");
    } else {
        check(!Nolt::IpAddr::tryFromString(text), "readFrom refuses an address");
    }
}

} // namespace

void stringForms(std::string_view bytes) {
    Input input(bytes);
    auto const type = input.below(9);
    auto const text = input.rest();
    switch (type) {
    case 0:
        roundTrip<Nolt::EthAddr>(text);
        return displayForm(text);
    case 1:
        roundTrip<Nolt::IpAddr>(text);
        return addressAtTheStart(text);
    case 2:
        roundTrip<Nolt::IpGenAddr>(text);
        return addresses(text);
    case 3:
        roundTrip<Nolt::IpGenAddrWithMask>(text);
        return prefixes(text);
    case 4:
        roundTrip<Nolt::IpGenPrefix>(text);
        return prefixes(text);
    case 5:
        roundTrip<Vxlan::Vni>(text);
        return dottedForm(text);
    case 6:
        return roundTrip<Vxlan::VniOrNone>(text);
    case 7:
        return roundTrip<Bridging::VlanIdOrNone>(text);
    default:
        return roundTrip<Quay::Seqno32>(text);
    }
}

} // namespace fuzz
