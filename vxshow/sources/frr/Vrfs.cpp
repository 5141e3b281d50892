#include "vxshow/sources/frr/Vrfs.h"

#include "vxshow/sources/RoutePrefix.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/JsonFields.h"
#include "vxshow/text/Quoting.h"

#include <optional>

namespace vxshow::sources::frr {

namespace {

constexpr std::string_view expectedText = "a text";

void leaveOut(Collector & join, std::string const & vrf, std::string_view column,
              std::string_view text, std::string_view expected) {
    auto what = "VRF \"" + vrf + "\": ";
    what.append(column).append(" ").append(text::shownInQuotes(text)).append(", expected ");
    join.leaveOut(Subject::routers, what.append(expected));
}

/// Converts an IPv4-mapped address, ::ffff:0:0/96 (RFC 4291, 2.5.5.2), to IPv4: the nexthops of
/// IPv6 prefixes are VTEPs in that form.
Nolt::IpGenAddr unmapped(Nolt::IpGenAddr const & address) {
    bool const isMapped = address.family() == Nolt::Family::ipv6 && address.high() == 0 &&
                          address.low() >> 32 == 0xFFFF;
    return isMapped ? Nolt::IpGenAddr(Nolt::IpAddr(static_cast<Vex::U32>(address.low()))) : address;
}

/// Where a document about a VRF goes.
struct VrfContext {
    std::string const & vrf;
    Collector & join;
};

using Addresses = std::vector<Nolt::IpGenAddrWithMask>;

constexpr auto addressObject = text::lenientObject(
    "an address",
    text::requiredMember("address", [](text::JsonValue & value, Addresses & into, VrfContext to) {
        auto const text = value.text(expectedText);
        auto const address = Nolt::IpGenAddrWithMask::tryFromString(text.text());
        if (address && !address->isNone()) {
            into.push_back(*address);
        } else {
            leaveOut(to.join, to.vrf, "address", text.text(),
                     "an address with its prefix length such as 10.1.2.3/24");
        }
    }));

struct Interface {
    std::string macText = {};
    Addresses addresses = {};
};

constexpr auto interfaceObject = text::lenientObject(
    "an interface",
    text::optionalMember("hardwareAddress",
                         [](text::JsonValue & value, Interface & into, VrfContext) {
                             into.macText = value.text(text::anEthernetAddress).text();
                         }),
    text::optionalMember("ipAddresses",
                         [](text::JsonValue & value, Interface & into, VrfContext to) {
                             value.elements("a list of addresses", [&](text::JsonValue & one) {
                                 to.join.step();
                                 addressObject.read(one, into.addresses, to);
                             });
                         }));

/// A tunnel, for example, has no MAC address, or a hardware address of another type.
void readInterface(std::string const & name, text::JsonValue & value, VrfContext to) {
    to.join.step();
    Interface read;
    interfaceObject.read(value, read, to);
    auto const mac = Nolt::EthAddr::tryFromString(read.macText);
    if (!mac && !read.macText.empty() && !read.addresses.empty() && to.join.isOfVni(to.vrf, name)) {
        leaveOut(to.join, to.vrf, "hardwareAddress", read.macText, text::anEthernetAddress);
    }
    to.join.interface(to.vrf, name, mac.value_or(Nolt::EthAddr()), read.addresses);
}

struct Nexthop {
    Nolt::IpGenAddr address = {};
    bool isActive = false;
    bool isResolver = false;
};

constexpr auto nexthopObject = text::lenientObject(
    "a nexthop",
    text::optionalMember(
        "ip",
        [](text::JsonValue & value, Nexthop & into, VrfContext to) {
            auto const text = value.text(text::anIpAddress);
            into.address = Nolt::IpGenAddr::tryFromString(text.text()).value_or(Nolt::IpGenAddr());
            if (into.address.isNone()) {
                leaveOut(to.join, to.vrf, "nexthop", text.text(), text::anIpAddress);
            }
        }),
    text::optionalMember("active", [](text::JsonValue & value, Nexthop & into,
                                      VrfContext) { into.isActive = value.boolean(); }),
    text::optionalMember("resolver", [](text::JsonValue & value, Nexthop & into, VrfContext) {
        into.isResolver = value.boolean();
    }));

/// Takes the nexthop itself, not the one it resolves to (`resolver`).
void readNexthop(text::JsonValue & value, std::vector<Nolt::IpGenAddr> & nexthops, VrfContext to) {
    to.join.step();
    Nexthop read;
    nexthopObject.read(value, read, to);
    if (!read.address.isNone() && read.isActive && !read.isResolver) {
        nexthops.push_back(unmapped(read.address));
    }
}

struct Route {
    bool isSelected = false;
    std::vector<Nolt::IpGenAddr> nexthops = {};
};

constexpr auto routeObject = text::lenientObject(
    "a route",
    text::optionalMember("selected", [](text::JsonValue & value, Route & into,
                                        VrfContext) { into.isSelected = value.boolean(); }),
    text::requiredMember("nexthops", [](text::JsonValue & value, Route & into, VrfContext to) {
        value.elements("a list of nexthops",
                       [&](text::JsonValue & one) { readNexthop(one, into.nexthops, to); });
    }));

void readRoute(text::JsonValue & value, Nolt::IpGenPrefix const & prefix, VrfContext to) {
    to.join.step();
    Route read;
    routeObject.read(value, read, to);
    if (read.isSelected) {
        to.join.route(to.vrf, prefix, read.nexthops);
    }
}

struct Vrf {
    std::string name = {};
    bool isDown = false;
};

constexpr auto vrfObject =
    text::lenientObject("a VRF",
                        text::requiredMember("vrf",
                                             [](text::JsonValue & value, Vrf & into) {
                                                 into.name = value.text("the name of a VRF").text();
                                             }),
                        text::optionalMember("state", [](text::JsonValue & value, Vrf & into) {
                            into.isDown = value.text(expectedText).text() == "Down";
                        }));

constexpr auto vrfsObject = text::lenientObject(
    "an object", text::requiredMember("vrfs", [](text::JsonValue & value, Collector & join) {
        value.elements("a list of VRFs", [&](text::JsonValue & element) {
            join.step();
            Vrf read;
            vrfObject.read(element, read);
            join.vrf(read.name, read.isDown);
        });
    }));

} // namespace

void readVrfs(text::JsonReader & json, Collector & join) {
    vrfsObject.read(json, join);
}

void readInterfaces(text::JsonReader & json, std::string const & vrf, Collector & join) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        // Some builds of FRR without bfdd have a text among the interfaces, "ptmStatus".
        if (*value.at() == '{') {
            readInterface(std::string(key.text()), value, {vrf, join});
        }
    });
}

void readRoutes(text::JsonReader & json, std::string const & vrf, Collector & join) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        join.step();
        auto const prefix = readRoutePrefix(key.text());
        if (!prefix) {
            return leaveOut(join, vrf, "route", key.text(), "a prefix such as 10.1.0.0/16");
        }
        value.elements("a list of routes", [&](text::JsonValue & element) {
            readRoute(element, *prefix, {vrf, join});
        });
    });
}

} // namespace vxshow::sources::frr
