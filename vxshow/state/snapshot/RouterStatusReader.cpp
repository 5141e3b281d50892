#include "vxshow/state/snapshot/RouterStatusReader.h"

#include "state/LRStatusV2.h"
#include "vxshow/state/snapshot/DirectoryReader.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/JsonMembers.h"

#include <array>

namespace vxshow::state::snapshot {

namespace {

using VxlanController::LRIpPortV2;
using VxlanController::LRIpUplinkPortV2;
using VxlanController::LRRouteV2;
using VxlanController::LRStatusV2;
using VxlanController::PortVlanPairV2;

constexpr std::string_view anObjectByAddress =
    "an object whose members are addresses with their prefix length";

/// What ports and uplink ports have in common.
struct PortPlace {
    Nolt::EthAddr mac;
    Nolt::IpGenAddr vtep;
};

/// Reads the object of a port, whose members are `names`: `mac` is the place of "mac" among them,
/// "vtep" comes next. All are required up to "mac". Calls `takeOwn(JsonValue &)` for any other.
template <class TakeOwn>
PortPlace readPlace(text::JsonValue & value, std::string_view expected,
                    std::array<text::MemberName, 3> const & names, std::size_t mac,
                    TakeOwn && takeOwn) {
    text::Members members(names);
    PortPlace read;
    auto const * const start = value.at();
    value.members(expected, [&](text::JsonText const & name, text::JsonValue & member) {
        auto const place = members.take(name);
        if (place == mac) {
            read.mac = text::readMac(member.text(text::anEthernetAddress));
        } else if (place == mac + 1) {
            read.vtep = text::readIp(member.text(text::anIpAddress));
        } else {
            takeOwn(member);
        }
    });
    for (std::size_t needed = 0; needed <= mac; ++needed) {
        members.require(needed, start);
    }
    return read;
}

LRIpPortV2 readPort(Nolt::IpGenAddrWithMask const & ip, text::JsonValue & value) {
    static constexpr std::array<text::MemberName, 3> names{"vni", "mac", "vtep"};
    Vxlan::Vni vni;
    auto const place = readPlace(
        value, "an object of \"vni\", \"mac\" and \"vtep\"", names, 1,
        [&](text::JsonValue & member) { vni = Vxlan::Vni(member.number(Vxlan::Vni::max)); });
    return {ip, vni, place.mac, place.vtep};
}

void readPorts(text::JsonValue & value, LRStatusV2 & status) {
    value.members(anObjectByAddress, [&](text::JsonText const & key, text::JsonValue & entry) {
        auto const ip = text::readIpWithMask(key);
        text::onlyNew(status.ipPortIs(readPort(ip, entry)), key);
    });
}

PortVlanPairV2 readPortVlan(text::JsonValue & value) {
    constexpr std::size_t port = 0;
    constexpr Vex::U32 maxVlan = 0xFFFF;
    static constexpr std::array<text::MemberName, 2> names{"port", "vlan"};
    text::Members members(names);
    PortVlanPairV2 pair;
    auto const * const start = value.at();
    value.members("an object of \"port\" and \"vlan\"",
                  [&](text::JsonText const & name, text::JsonValue & member) {
                      if (members.take(name) == port) {
                          pair.port = Vex::String(member.text("the name of a port").text());
                      } else {
                          auto const vlan = static_cast<Vex::U16>(member.number(maxVlan));
                          pair.vlan = Bridging::VlanIdOrNone(vlan);
                      }
                  });
    members.require(port, start);
    return pair;
}

/// Each port on each of its VLANs, as often as that is a pair of its own.
LRIpUplinkPortV2::PortVlans readPortVlans(text::JsonValue & value) {
    LRIpUplinkPortV2::PortVlans pairs;
    value.elements("a list of ports", [&](text::JsonValue & element) {
        auto pair = readPortVlan(element);
        if (pairs.has(pair)) [[unlikely]] {
            element.refuseAgain();
        }
        pairs.upsert({std::move(pair), true});
    });
    return pairs;
}

LRIpUplinkPortV2 readUplink(Nolt::IpGenAddrWithMask const & ip, text::JsonValue & value) {
    static constexpr std::array<text::MemberName, 3> names{"mac", "vtep", "ports"};
    LRIpUplinkPortV2::PortVlans pairs;
    auto const place = readPlace(value, "an object of \"mac\", \"vtep\" and \"ports\"", names, 0,
                                 [&](text::JsonValue & member) { pairs = readPortVlans(member); });
    LRIpUplinkPortV2 uplink(ip, place.mac, place.vtep);
    uplink.portVlansAre(std::move(pairs));
    return uplink;
}

void readUplinks(text::JsonValue & value, LRStatusV2 & status) {
    value.members(anObjectByAddress, [&](text::JsonText const & key, text::JsonValue & entry) {
        auto const ip = text::readIpWithMask(key);
        text::onlyNew(status.ipUplinkPortIs(readUplink(ip, entry)), key);
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

} // namespace

Vex::Ptr<Vex::Dir> readRouterStatus(text::JsonValue & value) {
    static constexpr std::array<text::MemberName, 3> names{"ports", "uplinks", "routes"};
    static constexpr std::array readers{readPorts, readUplinks, readRoutes};
    return readDirectory(value, "an object whose members are logical routers",
                         [](Vex::Name const & name, text::JsonValue & member) {
                             text::Members members(names);
                             auto status = Vex::makePtr<LRStatusV2>(name.stringValue());
                             member.members(
                                 "an object of \"ports\", \"uplinks\" and \"routes\"",
                                 [&](text::JsonText const & tableName, text::JsonValue & table) {
                                     readers[members.take(tableName)](table, *status);
                                 });
                             return status;
                         });
}

} // namespace vxshow::state::snapshot
