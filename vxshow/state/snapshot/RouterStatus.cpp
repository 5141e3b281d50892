#include "vxshow/state/snapshot/RouterStatus.h"

#include "vxshow/state/snapshot/Directory.h"
#include "vxshow/state/snapshot/Field.h"
#include "vxshow/state/snapshot/SortedByKey.h"
#include "vxshow/text/JsonAddresses.h"

namespace vxshow::state::snapshot {

namespace {

using VxlanController::LRIpPortV2;
using VxlanController::LRIpUplinkPortV2;
using VxlanController::LRRouteV2;
using VxlanController::LRStatusV2;
using VxlanController::PortVlanPairV2;

constexpr std::string_view anObjectByAddress =
    "an object whose members are addresses with their prefix length";

/// What is read for ports and for uplink ports alike.
struct PortPlace {
    Nolt::EthAddr mac;
    Nolt::IpGenAddr vtep;
};

constexpr auto macMember = requiredMember(
    "mac",
    [](text::JsonValue & value, PortPlace & into) {
        into.mac = text::readMac(value.text(text::anEthernetAddress));
    },
    [](ValuesWriter & values, std::string_view name, auto const & port) {
        values.address(name, port.mac());
    });

constexpr auto vtepMember = optionalMember(
    "vtep",
    [](text::JsonValue & value, PortPlace & into) {
        into.vtep = text::readIp(value.text(text::anIpAddress));
    },
    [](ValuesWriter & values, std::string_view name, auto const & port) {
        if (!port.vtep().isNone()) {
            values.address(name, port.vtep());
        }
    });

struct Port : PortPlace {
    Vxlan::Vni vni;
};

constexpr auto portObject = text::strictObject(
    "an object of \"vni\", \"mac\" and \"vtep\"",
    requiredMember(
        "vni",
        [](text::JsonValue & value, Port & into) {
            into.vni = Vxlan::Vni(value.number(Vxlan::Vni::max));
        },
        [](ValuesWriter & values, std::string_view name, LRIpPortV2 const & port) {
            values.number(name, port.vni().value());
        }),
    macMember, vtepMember);

LRIpPortV2 readPort(Nolt::IpGenAddrWithMask const & ip, text::JsonValue & value) {
    Port port;
    portObject.read(value, port);
    return {ip, port.vni, port.mac, port.vtep};
}

void readPorts(text::JsonValue & value, LRStatusV2 & status) {
    value.members(anObjectByAddress, [&](text::JsonText const & key, text::JsonValue & entry) {
        auto const ip = text::readIpWithMask(key);
        text::onlyNew(status.ipPortIs(readPort(ip, entry)), key);
    });
}

void writePorts(ValuesWriter & values, std::string_view name, LRStatusV2 const & status) {
    if (status.ipPort().empty()) {
        return;
    }
    values.object(name, [&] {
        forEachByKey(status.ipPort(), &LRIpPortV2::ip, [&](LRIpPortV2 const & port) {
            values.object(Spelled(port.ip()), [&] { writeMembers(portObject, values, port); });
        });
    });
}

constexpr auto portVlanObject = text::strictObject(
    "an object of \"port\" and \"vlan\"",
    requiredMember(
        "port",
        [](text::JsonValue & value, PortVlanPairV2 & into) {
            into.port = Vex::String(value.text("the name of a port").text());
        },
        [](ValuesWriter & values, std::string_view name, PortVlanPairV2 const & from) {
            values.text(name, from.port);
        }),
    optionalMember(
        "vlan",
        [](text::JsonValue & value, PortVlanPairV2 & into) {
            constexpr Vex::U32 max = 0xFFFF;
            into.vlan = Bridging::VlanIdOrNone(static_cast<Vex::U16>(value.number(max)));
        },
        [](ValuesWriter & values, std::string_view name, PortVlanPairV2 const & from) {
            if (from.vlan.value() != 0) {
                values.number(name, from.vlan.value());
            }
        }));

using PortVlans = LRIpUplinkPortV2::PortVlans;

/// Reads each port with its VLAN; a repeated pair is refused.
PortVlans readPortVlans(text::JsonValue & value) {
    PortVlans pairs;
    value.elements("a list of ports", [&](text::JsonValue & element) {
        PortVlanPairV2 pair;
        portVlanObject.read(element, pair);
        if (pairs.has(pair)) [[unlikely]] {
            element.refuseAgain();
        }
        pairs.upsert({std::move(pair), true});
    });
    return pairs;
}

void writePortVlans(ValuesWriter & values, std::string_view name, PortVlans const & pairs) {
    values.list(name, [&] {
        forEachByKey(pairs, std::identity(), [&](PortVlanPairV2 const & pair) {
            values.printer().startListEntry();
            writeMembers(portVlanObject, values, pair);
            values.printer().endListEntry();
        });
    });
}

struct Uplink : PortPlace {
    PortVlans ports;
};

constexpr auto uplinkObject = text::strictObject(
    "an object of \"mac\", \"vtep\" and \"ports\"", macMember, vtepMember,
    optionalMember(
        "ports", [](text::JsonValue & value, Uplink & into) { into.ports = readPortVlans(value); },
        [](ValuesWriter & values, std::string_view name, LRIpUplinkPortV2 const & uplink) {
            if (!uplink.portVlan().empty()) {
                writePortVlans(values, name, uplink.portVlan());
            }
        }));

LRIpUplinkPortV2 readUplink(Nolt::IpGenAddrWithMask const & ip, text::JsonValue & value) {
    Uplink read;
    uplinkObject.read(value, read);
    LRIpUplinkPortV2 uplink(ip, read.mac, read.vtep);
    uplink.portVlansAre(std::move(read.ports));
    return uplink;
}

void readUplinks(text::JsonValue & value, LRStatusV2 & status) {
    value.members(anObjectByAddress, [&](text::JsonText const & key, text::JsonValue & entry) {
        auto const ip = text::readIpWithMask(key);
        text::onlyNew(status.ipUplinkPortIs(readUplink(ip, entry)), key);
    });
}

void writeUplinks(ValuesWriter & values, std::string_view name, LRStatusV2 const & status) {
    if (status.ipUplinkPort().empty()) {
        return;
    }
    values.object(name, [&] {
        auto const write = [&](LRIpUplinkPortV2 const & uplink) {
            values.object(Spelled(uplink.ip()),
                          [&] { writeMembers(uplinkObject, values, uplink); });
        };
        forEachByKey(status.ipUplinkPort(), &LRIpUplinkPortV2::ip, write);
    });
}

void readRoutes(text::JsonValue & value, LRStatusV2 & status) {
    value.members("an object whose members are prefixes",
                  [&](text::JsonText const & key, text::JsonValue & nexthops) {
                      LRRouteV2 route(text::readPrefix(key));
                      nexthops.texts("a list of IP addresses", text::anIpAddress,
                                     [&](text::JsonText const & text) {
                                         text::onlyNew(route.nexthopIs(text::readIp(text)), text);
                                     });
                      text::onlyNew(status.routeIs(std::move(route)), key);
                  });
}

void writeRoutes(ValuesWriter & values, std::string_view name, LRStatusV2 const & status) {
    if (status.route().empty()) {
        return;
    }
    values.object(name, [&] {
        forEachByKey(status.route(), &LRRouteV2::prefix, [&](LRRouteV2 const & route) {
            values.addresses(Spelled(route.prefix()), route.nexthop());
        });
    });
}

constexpr auto routerObject =
    text::strictObject("an object of \"ports\", \"uplinks\" and \"routes\"",
                       optionalMember("ports", readPorts, writePorts),
                       optionalMember("uplinks", readUplinks, writeUplinks),
                       optionalMember("routes", readRoutes, writeRoutes));

} // namespace

Vex::Ptr<Vex::Dir> readRouterStatus(text::JsonValue & value) {
    return readDirectory(value, "an object whose members are logical routers",
                         [](Vex::Name const & name, text::JsonValue & member) {
                             auto status = Vex::makePtr<LRStatusV2>(name.stringValue());
                             routerObject.read(member, *status);
                             return status;
                         });
}

void writeRouterStatus(ValuesWriter & values, std::string_view key, Vex::Dir const & routers) {
    writeDirectory<LRStatusV2>(values, key, routers, [&](LRStatusV2 const & status) {
        writeMembers(routerObject, values, status);
    });
}

} // namespace vxshow::state::snapshot
