#include "vxshow/sources/frr/Vnis.h"

#include "vxshow/sources/frr/Entries.h"
#include "vxshow/sources/frr/VtepText.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/Quoting.h"

#include <limits>

namespace vxshow::sources::frr {

namespace {

constexpr std::string_view aText = "a text";

constexpr std::array<text::MemberName, 2> kinds{"L2", "L3"};

/// What is read of a VNI. Its members come in any order, and its kind is one of them.
struct VniMembers {
    bool isL3 = false;
    Vex::U32 vni = 0;
    std::string vrf = {};
    std::string interface = {};
    std::string device = {};
    std::optional<bool> isUp = {}; ///< of an L3 VNI
    Vex::U32 entries = 0;          ///< not 0 if it has MAC or IP addresses
    Nolt::EthAddr routerMac = {};
    Nolt::IpAddr address = {};
    std::string ipv6Address = {}; ///< empty: it is not IPv6
    std::vector<Nolt::IpAddr> floods = {};
    std::vector<std::string> ipv6Floods = {};
    std::string addressLeftOut = {}; ///< empty: the address is valid, or IPv6
    std::vector<std::string> floodsLeftOut = {};
};

void takeKind(text::JsonText const & text, VniMembers & into) {
    into.isL3 = text.text() == kinds[1].text();
    if (!into.isL3 && text.text() != kinds[0].text()) {
        text.refuse(text::oneOf(kinds));
    }
}

/// A VNI whose VXLAN device is in no bridge has no interface: then an L2 VNI has no such
/// member, and that of an L3 VNI is "None".
void takeInterface(std::string_view name, VniMembers & into) {
    if (name != "None") {
        into.interface = name;
    }
}

std::string invalidVtep(text::JsonText const & text) {
    return "VTEP " + text::shownInQuotes(text.text()) + ", expected " +
           std::string(text::anIpv4Address);
}

void takeAddress(text::JsonText const & text, VniMembers & into) {
    auto const vtep = readVtepText(text);
    into.address = vtep.address;
    if (vtep.kind == VtepText::Kind::ipv6) {
        into.ipv6Address = text.text();
    } else if (vtep.kind == VtepText::Kind::other) {
        into.addressLeftOut = invalidVtep(text);
    }
}

void takeFlood(text::JsonText const & text, VniMembers & into) {
    auto const vtep = readVtepText(text);
    if (vtep.kind == VtepText::Kind::ipv4) {
        into.floods.push_back(vtep.address);
    } else if (vtep.kind == VtepText::Kind::ipv6) {
        into.ipv6Floods.emplace_back(text.text());
    } else {
        into.floodsLeftOut.push_back(invalidVtep(text));
    }
}

/// A remote VTEP and how frames are flooded to it.
struct RemoteVtep {
    std::optional<text::JsonText> ip = {};
    std::string flood = {};
};

/// Frames are certainly flooded to the VTEP itself: ingress replication, which FRR calls head-end
/// replication. Otherwise they go to a multicast group, or nowhere.
constexpr std::string_view headEndReplication = "HER";

constexpr auto remoteVtepObject = text::lenientObject(
    "a VTEP",
    text::requiredMember(
        "ip", [](text::JsonValue & value, RemoteVtep & into) { into.ip = value.text(aText); }),
    text::optionalMember("flood", [](text::JsonValue & value, RemoteVtep & into) {
        into.flood = value.text(aText).text();
    }));

void takeRemoteVtep(text::JsonValue & value, VniMembers & into) {
    if (*value.at() == '"') {
        return takeFlood(value.text(aText), into);
    }
    RemoteVtep read;
    remoteVtepObject.read(value, read);
    if (read.flood.empty() || read.flood == headEndReplication) {
        takeFlood(*read.ip, into);
    } else {
        into.floodsLeftOut.push_back("VTEP " + text::shownInQuotes(read.ip->text()) + " floods " +
                                     text::shownInQuotes(read.flood) + ", expected \"HER\"");
    }
}

void takeRemoteVteps(text::JsonValue & value, VniMembers & into, Collector & join) {
    value.elements("a list of VTEPs", [&](text::JsonValue & one) {
        join.step();
        takeRemoteVtep(one, into);
    });
}

/// In FRR 8.4 and 8.5 the list itself, later its length.
void takeNumRemoteVteps(text::JsonValue & value, VniMembers & into, Collector & join) {
    if (*value.at() == '[') {
        return takeRemoteVteps(value, into, join);
    }
    value.integer("a list of IPv4 addresses, or their number");
}

/// The interface has one name in an L2 VNI and another in an L3 VNI.
constexpr auto interfaceMember(text::MemberName name) {
    return text::optionalMember(name, [](text::JsonValue & value, VniMembers & into, Collector &) {
        takeInterface(value.text(aText).text(), into);
    });
}

/// The address has one name in an L2 VNI and another in an L3 VNI. Without it, the VNI has none.
constexpr auto addressMember(text::MemberName name) {
    return text::optionalMember(name, [](text::JsonValue & value, VniMembers & into, Collector &) {
        takeAddress(value.text(aText), into);
    });
}

/// `vrf` until FRR 10.0, `tenantVrf` since 9.0.
constexpr auto vrfMember(text::MemberName name) {
    return text::optionalMember(name, [](text::JsonValue & value, VniMembers & into, Collector &) {
        into.vrf = value.text(aText).text();
    });
}

constexpr auto countMember(text::MemberName name) {
    return text::optionalMember(name, [](text::JsonValue & value, VniMembers & into, Collector &) {
        into.entries |= value.number(std::numeric_limits<Vex::U32>::max());
    });
}

constexpr auto vniObject = text::lenientObject(
    "a VNI",
    text::requiredMember("vni", [](text::JsonValue & value, VniMembers & into,
                                   Collector &) { into.vni = value.number(Vxlan::Vni::max); }),
    text::requiredMember("type",
                         [](text::JsonValue & value, VniMembers & into, Collector &) {
                             takeKind(value.text(text::oneOf(kinds)), into);
                         }),
    // "unknown" if zebra does not have the device.
    text::optionalMember("vxlanInterface",
                         [](text::JsonValue & value, VniMembers & into, Collector &) {
                             into.device = value.text(aText).text();
                         }),
    text::optionalMember("state",
                         [](text::JsonValue & value, VniMembers & into, Collector &) {
                             into.isUp = value.text(aText).text() == "Up";
                         }),
    countMember("numMacs"), countMember("numArpNd"), vrfMember("vrf"), vrfMember("tenantVrf"),
    interfaceMember("sviInterface"), interfaceMember("sviIntf"), addressMember("vtepIp"),
    addressMember("localVtepIp"),
    // "None" if the VNI is down.
    text::optionalMember("routerMac",
                         [](text::JsonValue & value, VniMembers & into, Collector &) {
                             into.routerMac =
                                 text::tryReadMac(value.text(aText)).value_or(Nolt::EthAddr());
                         }),
    text::optionalMember("numRemoteVteps", takeNumRemoteVteps),
    text::optionalMember("remoteVteps", takeRemoteVteps));

void takeVni(VniMembers const & read, Collector & join) {
    Vxlan::Vni const vni(read.vni);
    auto const leaveOut = [&](Subjects about, std::string const & what) {
        join.leaveOut(about, "VNI " + std::to_string(read.vni) + ": " + what);
    };
    // The address is that of the ports, too.
    Subjects const own = read.isL3 ? Subject::routers : Subject::localMacs | Subject::routers;
    if (!read.addressLeftOut.empty()) {
        leaveOut(own, read.addressLeftOut);
    }
    for (auto const & what : read.floodsLeftOut) {
        leaveOut(Subject::remoteMacs, what);
    }
    if (read.isL3) {
        if (read.isUp) {
            join.l3VniDetails({vni, read.vrf, *read.isUp});
        }
        return join.l3Vni(vni, {read.vrf, read.interface, read.address, read.routerMac});
    }
    for (auto const & address : read.ipv6Floods) {
        leaveOutIpv6(join, Subject::remoteMacs, vni, "flood list", address);
    }
    if (!read.ipv6Address.empty()) {
        leaveOutIpv6(join, own, vni, "own VTEP", read.ipv6Address);
    }
    bool const isIdle = read.entries == 0 && read.floods.empty() && read.ipv6Floods.empty() &&
                        read.floodsLeftOut.empty();
    join.l2Vni(vni, {read.vrf, read.interface, read.device, read.address, read.ipv6Address,
                     read.floods, isIdle});
}

} // namespace

void readVnis(text::JsonReader & json, Collector & join) {
    json.documentElements("a list of VNIs", [&](text::JsonValue & element) {
        join.step();
        VniMembers read;
        vniObject.read(element, read, join);
        takeVni(read, join);
    });
}

void readVni(text::JsonReader & json, Collector & join) {
    VniMembers read;
    vniObject.read(json, read, join);
    takeVni(read, join);
}

} // namespace vxshow::sources::frr
