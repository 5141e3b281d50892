#include "vxshow/sources/frr/Vrfs.h"

#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/KnownMembers.h"
#include "vxshow/text/Quoting.h"

#include <array>
#include <optional>

namespace vxshow::sources::frr {

namespace {

constexpr std::string_view expectedText = "a text";

void leaveOut(Collector & join, std::string const & vrf, std::string_view column,
              std::string_view text, std::string_view expected) {
    auto what = "VRF \"" + vrf + "\": ";
    what.append(column).append(" ").append(text::shownInQuotes(text)).append(", expected ");
    join.leaveOut(what.append(expected));
}

/// Converts an IPv4-mapped address, ::ffff:0:0/96 (RFC 4291, 2.5.5.2), to IPv4: the nexthops of
/// IPv6 prefixes are VTEPs in that form.
Nolt::IpGenAddr unmapped(Nolt::IpGenAddr const & address) {
    bool const isMapped = address.family() == Nolt::Family::ipv6 && address.high() == 0 &&
                          address.low() >> 32 == 0xFFFF;
    return isMapped ? Nolt::IpGenAddr(Nolt::IpAddr(static_cast<Vex::U32>(address.low()))) : address;
}

void readAddress(text::JsonValue & value, std::string const & vrf,
                 std::vector<Nolt::IpGenAddrWithMask> & addresses, Collector & join) {
    static constexpr std::array<text::MemberName, 1> names{"address"};
    join.step();
    auto const * const start = value.at();
    text::KnownMembers members(names);
    value.members("an address", [&](text::JsonText const & name, text::JsonValue & member) {
        if (members.take(name) != 0) {
            return;
        }
        auto const text = member.text(expectedText);
        auto const address = Nolt::IpGenAddrWithMask::tryFromString(text.text());
        if (address && !address->isNone()) {
            addresses.push_back(*address);
        } else {
            leaveOut(join, vrf, "address", text.text(),
                     "an address with its prefix length such as 10.1.2.3/24");
        }
    });
    members.require(0, start);
}

/// A tunnel, for example, has no MAC address, or a hardware address of another type.
void readInterface(std::string const & name, text::JsonValue & value, std::string const & vrf,
                   Collector & join) {
    enum Name : std::size_t { hardwareAddress, ipAddresses };

    static constexpr std::array<text::MemberName, 2> names{"hardwareAddress", "ipAddresses"};
    join.step();
    text::KnownMembers members(names);
    std::optional<Nolt::EthAddr> mac;
    std::string macText;
    std::vector<Nolt::IpGenAddrWithMask> addresses;
    value.members("an interface", [&](text::JsonText const & memberName, text::JsonValue & member) {
        switch (members.take(memberName)) {
        case hardwareAddress:
            macText = member.text(text::anEthernetAddress).text();
            mac = Nolt::EthAddr::tryFromString(macText);
            break;
        case ipAddresses:
            member.elements("a list of addresses",
                            [&](text::JsonValue & one) { readAddress(one, vrf, addresses, join); });
            break;
        default:
            break;
        }
    });
    if (!mac && !macText.empty() && !addresses.empty() && join.isOfVni(vrf, name)) {
        leaveOut(join, vrf, "hardwareAddress", macText, text::anEthernetAddress);
    }
    join.interface(vrf, name, mac.value_or(Nolt::EthAddr()), addresses);
}

/// Takes the nexthop itself, not the one it resolves to (`resolver`).
void readNexthop(text::JsonValue & value, std::string const & vrf,
                 std::vector<Nolt::IpGenAddr> & nexthops, Collector & join) {
    enum Name : std::size_t { ip, active, resolver };

    static constexpr std::array<text::MemberName, 3> names{"ip", "active", "resolver"};
    join.step();
    text::KnownMembers members(names);
    bool isActive = false;
    bool isResolver = false;
    Nolt::IpGenAddr address;
    value.members("a nexthop", [&](text::JsonText const & name, text::JsonValue & member) {
        switch (members.take(name)) {
        case ip: {
            auto const text = member.text(text::anIpAddress);
            address = Nolt::IpGenAddr::tryFromString(text.text()).value_or(Nolt::IpGenAddr());
            if (address.isNone()) {
                leaveOut(join, vrf, "nexthop", text.text(), text::anIpAddress);
            }
            break;
        }
        case active:
            isActive = member.boolean();
            break;
        case resolver:
            isResolver = member.boolean();
            break;
        default:
            break;
        }
    });
    if (!address.isNone() && isActive && !isResolver) {
        nexthops.push_back(unmapped(address));
    }
}

void readRoute(text::JsonValue & value, std::string const & vrf, Nolt::IpGenPrefix const & prefix,
               Collector & join) {
    enum Name : std::size_t { selected, nexthops };

    static constexpr std::array<text::MemberName, 2> names{"selected", "nexthops"};
    join.step();
    auto const * const start = value.at();
    text::KnownMembers members(names);
    bool isSelected = false;
    std::vector<Nolt::IpGenAddr> addresses;
    value.members("a route", [&](text::JsonText const & name, text::JsonValue & member) {
        switch (members.take(name)) {
        case selected:
            isSelected = member.boolean();
            break;
        case nexthops:
            member.elements("a list of nexthops",
                            [&](text::JsonValue & one) { readNexthop(one, vrf, addresses, join); });
            break;
        default:
            break;
        }
    });
    members.require(nexthops, start);
    if (isSelected) {
        join.route(vrf, prefix, addresses);
    }
}

void readVrf(text::JsonValue & value, Collector & join) {
    enum Name : std::size_t { vrf, state };

    static constexpr std::array<text::MemberName, 2> names{"vrf", "state"};
    join.step();
    auto const * const start = value.at();
    text::KnownMembers members(names);
    std::string vrfName;
    bool isDown = false;
    value.members("a VRF", [&](text::JsonText const & name, text::JsonValue & member) {
        switch (members.take(name)) {
        case vrf:
            vrfName = member.text("the name of a VRF").text();
            break;
        case state:
            isDown = member.text(expectedText).text() == "Down";
            break;
        default:
            break;
        }
    });
    members.require(vrf, start);
    join.vrf(vrfName, isDown);
}

} // namespace

void readVrfs(text::JsonReader & json, Collector & join) {
    static constexpr std::array<text::MemberName, 1> names{"vrfs"};
    auto const * const start = json.at();
    text::KnownMembers members(names);
    json.document([&](text::JsonText const & name, text::JsonValue & value) {
        if (members.take(name) == 0) {
            value.elements("a list of VRFs",
                           [&](text::JsonValue & element) { readVrf(element, join); });
        }
    });
    members.require(0, start);
}

void readInterfaces(text::JsonReader & json, std::string const & vrf, Collector & join) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        readInterface(std::string(key.text()), value, vrf, join);
    });
}

void readRoutes(text::JsonReader & json, std::string const & vrf, Collector & join) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        join.step();
        auto const prefix = Nolt::IpGenPrefix::tryFromString(key.text());
        if (!prefix || prefix->isNone()) {
            return leaveOut(join, vrf, "route", key.text(), "a prefix such as 10.1.0.0/16");
        }
        value.elements("a list of routes",
                       [&](text::JsonValue & element) { readRoute(element, vrf, *prefix, join); });
    });
}

} // namespace vxshow::sources::frr
