#include "vxshow/mount/frr/FrrTables.h"

#include "Vex/Digits.h"
#include "vxshow/mount/frr/KnownMembers.h"
#include "vxshow/mount/json/Shown.h"
#include "vxshow/mount/json/Values.h"

#include <array>
#include <optional>

namespace vxshow {

namespace {

using Side = FrrJoin::Side;

constexpr std::string_view aText = "a text";
constexpr std::string_view anEntry = "an object of what is known of it";
constexpr Vex::U32 most = 0xFFFFFFFF;

/// Counters stand between the entries of an object, and they are no objects.
bool isEntry(JsonValue & value) {
    return *value.at() == '{';
}

std::optional<Nolt::EthAddr> hostMac(JsonText const & text) {
    constexpr auto usual = Nolt::EthAddr::maxTextLength;
    auto mac = text.mayHaveLength(usual) ? Nolt::EthAddr::tryFromString({text.content(), usual})
                                         : std::nullopt;
    if (!mac) {
        mac = Nolt::EthAddr::tryFromString(text.text());
    }
    return mac && !mac->isZero() ? mac : std::nullopt;
}

std::optional<Nolt::IpAddr> ipv4(JsonText const & text) {
    Nolt::IpAddr address;
    auto const * const end = Nolt::IpAddr::readFrom(text.content(), address);
    return end && *end == '"' ? address : Nolt::IpAddr::tryFromString(text.text());
}

std::optional<Nolt::IpGenAddr> someIp(JsonText const & text) {
    auto const ip = Nolt::IpGenAddr::tryFromString(text.text());
    return ip && !ip->isNone() ? ip : std::nullopt;
}

std::optional<Vxlan::Vni> vniOf(std::string_view text) {
    auto const number = Vex::readDecimal(text, Vxlan::Vni::max);
    return number ? std::optional(Vxlan::Vni(*number)) : std::nullopt;
}

/// Says of a text in a VNI that it is not what was expected there.
void leaveOut(FrrJoin & join, Vxlan::Vni vni, std::string_view column, JsonText const & text,
              std::string_view expected) {
    auto what = "VNI " + std::string(vni.stringValue()) + ": ";
    what.append(column).append(" \"").append(shownText(text.text()));
    join.leaveOut(what.append("\", expected ").append(expected));
}

/// Calls `take(vni, value)` for the entries of a document by VNI.
template <class Take>
void eachVni(JsonReader & json, FrrJoin & join, Take && take) {
    json.document([&](JsonText const & key, JsonValue & value) {
        if (!isEntry(value)) {
            return;
        }
        if (auto const vni = vniOf(key.text())) {
            return take(*vni, value);
        }
        join.leaveOut("VNI \"" + shownText(key.text()) + "\", expected one from 0 to 16777215");
    });
}

/// A VNI, member by member: what its kind is stands among them.
class VniReader {
public:
    void take(JsonText const & name, JsonValue & value) {
        switch (members_.take(name)) {
        case vni:
            vni_ = value.number(Vxlan::Vni::max);
            break;
        case type: {
            auto const text = value.text(oneOf(kinds));
            isL3_ = text.text() == kinds[1].text();
            if (!isL3_ && text.text() != kinds[0].text()) {
                text.refuse(oneOf(kinds));
            }
            break;
        }
        case vrf:
            vrf_ = value.text(aText).text();
            break;
        case sviInterface:
        case sviIntf:
            readInterface(value.text(aText).text());
            break;
        case vtepIp:
        case localVtepIp:
            readAddress(value.text(aText));
            break;
        case remoteVteps:
            readFloods(value);
            break;
        default:
            break;
        }
    }

    void finish(char const * start, FrrJoin & join) {
        members_.require(vni, start);
        members_.require(type, start);
        members_.require(vrf, start);
        members_.require(isL3_ ? localVtepIp : vtepIp, start);
        Vxlan::Vni const number(vni_);
        for (auto const & text : noAddresses_) {
            join.leaveOut("VNI " + std::to_string(vni_) + ": VTEP \"" + text + "\", expected " +
                          std::string(anIpv4Address));
        }
        if (isL3_) {
            return join.l3Vni(number, {vrf_, interface_, address_});
        }
        join.l2Vni(number, {vrf_, interface_, address_, floods_});
    }

private:
    enum Name : std::size_t {
        vni,
        type,
        vrf,
        sviInterface,
        sviIntf,
        vtepIp,
        localVtepIp,
        remoteVteps
    };

    static constexpr std::array<MemberName, 8> names{
        "vni", "type", "vrf", "sviInterface", "sviIntf", "vtepIp", "localVtepIp", "numRemoteVteps"};
    static constexpr std::array<MemberName, 2> kinds{"L2", "L3"};

    /// A VNI whose VXLAN device is in no bridge has no interface: an L2 VNI is without the member
    /// then, and an L3 VNI says "None".
    void readInterface(std::string_view name) {
        if (name != "None") {
            interface_ = name;
        }
    }

    void readAddress(JsonText const & text) {
        if (auto const address = ipv4(text)) {
            address_ = *address;
        } else {
            noAddresses_.push_back(shownText(text.text()));
        }
    }

    /// Under that name stands the list, not its length.
    void readFloods(JsonValue & value) {
        value.texts("a list of IPv4 addresses", anIpv4Address, [&](JsonText const & text) {
            auto const address = ipv4(text);
            if (address && !address->isZero()) {
                floods_.push_back(*address);
            } else {
                noAddresses_.push_back(shownText(text.text()));
            }
        });
    }

    KnownMembers members_{names};
    bool isL3_ = false;
    Vex::U32 vni_ = 0;
    std::string vrf_;
    std::string interface_;
    Nolt::IpAddr address_;
    std::vector<Nolt::IpAddr> floods_;
    std::vector<std::string> noAddresses_;
};

constexpr std::array<MemberName, 3> sides{"local", "remote", "auto"};

/// Which of `sides` it is. Throws `Refusal` for another text.
std::size_t readSide(JsonValue & value) {
    // Made once: the text is for the error that each of many entries might have.
    static auto const expected = oneOf(sides);
    auto const text = value.text(expected);
    for (std::size_t index = 0; index < sides.size(); ++index) {
        if (sides[index].standsAt(text.content())) {
            return index;
        }
    }
    text.refuse(expected);
}

/// Reads the entry of a MAC address. In details there may be one of no type: nobody knows where
/// it is.
void readMacEntry(JsonValue & value, Vxlan::Vni vni, Nolt::EthAddr mac, bool detailed,
                  FrrJoin & join) {
    enum Name : std::size_t { type, remoteVtep, localSequence, remoteSequence, esi };

    static constexpr std::array<MemberName, 5> names{"type", "remoteVtep", "localSequence",
                                                     "remoteSequence", "esi"};
    auto const * const start = value.at();
    KnownMembers members(names);
    std::size_t side = sides.size();
    std::array<Vex::U32, 2> sequences{};
    std::optional<Nolt::IpAddr> vtep;
    std::string segment;
    value.members(anEntry, [&](JsonText const & name, JsonValue & member) {
        switch (members.take(name)) {
        case type:
            side = readSide(member);
            break;
        case remoteVtep: {
            auto const text = member.text(anIpv4Address);
            vtep = ipv4(text);
            if (!vtep) {
                leaveOut(join, vni, mac.stringValue() + " at", text, anIpv4Address);
            }
            break;
        }
        case localSequence:
            sequences[0] = member.number(most);
            break;
        case remoteSequence:
            sequences[1] = member.number(most);
            break;
        case esi:
            segment = member.text("an Ethernet segment").text();
            break;
        default:
            break;
        }
    });
    if (!detailed) {
        members.require(type, start);
    }
    if (side > 1) {
        return;
    }
    members.require(side == 0 ? localSequence : remoteSequence, start);
    if (side == 0) {
        return join.mac({vni, mac, Side::local, {}, sequences[0], segment});
    }
    members.require(remoteVtep, start);
    if (vtep) {
        join.mac({vni, mac, Side::remote, *vtep, sequences[1], segment});
    }
}

void readMacObject(JsonText const & key, JsonValue & value, Vxlan::Vni vni, bool detailed,
                   FrrJoin & join) {
    if (!isEntry(value)) {
        return;
    }
    auto const mac = hostMac(key);
    if (!mac) {
        return leaveOut(join, vni, "MAC", key, anEthernetAddress);
    }
    if (join.takes(vni, *mac)) {
        readMacEntry(value, vni, *mac, detailed, join);
    }
}

/// A member of what is known of the MAC addresses of a VNI: they stand in one of them.
void readMacsMember(JsonText const & name, JsonValue & value, Vxlan::Vni vni, bool detailed,
                    KnownMembers & members, FrrJoin & join) {
    if (members.take(name) == 0) {
        value.members(anObjectByMac, [&](JsonText const & key, JsonValue & entry) {
            readMacObject(key, entry, vni, detailed, join);
        });
    }
}

constexpr std::array<MemberName, 1> macsName{"macs"};

void readSegment(JsonValue & value, FrrJoin & join) {
    enum Name : std::size_t { esi, vteps };

    static constexpr std::array<MemberName, 2> names{"esi", "vteps"};
    static constexpr std::array<MemberName, 1> vtepNames{"vtep"};
    auto const * const start = value.at();
    KnownMembers members(names);
    std::string segment;
    std::vector<Nolt::IpAddr> addresses;
    auto const readVtep = [&](JsonValue & one) {
        auto const * const at = one.at();
        KnownMembers vtepMembers(vtepNames);
        one.members("a VTEP", [&](JsonText const & name, JsonValue & member) {
            if (vtepMembers.take(name) != 0) {
                return;
            }
            auto const text = member.text(anIpv4Address);
            auto const address = ipv4(text);
            if (address && !address->isZero()) {
                addresses.push_back(*address);
            } else {
                join.leaveOut("Ethernet segment: VTEP \"" + shownText(text.text()) +
                              "\", expected " + std::string(anIpv4Address));
            }
        });
        vtepMembers.require(0, at);
    };
    value.members("an Ethernet segment", [&](JsonText const & name, JsonValue & member) {
        switch (members.take(name)) {
        case esi:
            segment = member.text("an Ethernet segment's identifier").text();
            break;
        case vteps:
            member.elements("a list of VTEPs", readVtep);
            break;
        default:
            break;
        }
    });
    members.require(esi, start);
    join.segment(std::move(segment), std::move(addresses));
}

void readNeighbour(JsonValue & value, Vxlan::Vni vni, Nolt::IpGenAddr const & ip, FrrJoin & join) {
    enum Name : std::size_t { type, state, mac, localSequence, remoteSequence };

    static constexpr std::array<MemberName, 5> names{"type", "state", "mac", "localSequence",
                                                     "remoteSequence"};
    static constexpr std::array<MemberName, 2> states{"active", "inactive"};
    auto const * const start = value.at();
    KnownMembers members(names);
    std::size_t side = sides.size();
    bool isActive = false;
    std::array<Vex::U32, 2> sequences{};
    std::optional<Nolt::EthAddr> known;
    value.members(anEntry, [&](JsonText const & name, JsonValue & member) {
        switch (members.take(name)) {
        case type:
            side = readSide(member);
            break;
        case state: {
            auto const text = member.text("\"active\" or \"inactive\"");
            isActive = states[0].standsAt(text.content());
            if (!isActive && !states[1].standsAt(text.content())) {
                text.refuse(oneOf(states));
            }
            break;
        }
        case mac: {
            auto const text = member.text(anEthernetAddress);
            known = hostMac(text);
            if (!known) {
                leaveOut(join, vni, ip.stringValue() + " has MAC", text, anEthernetAddress);
            }
            break;
        }
        case localSequence:
            sequences[0] = member.number(most);
            break;
        case remoteSequence:
            sequences[1] = member.number(most);
            break;
        default:
            break;
        }
    });
    for (std::size_t const needed : {type, state, mac}) {
        members.require(needed, start);
    }
    if (side > 1 || !isActive || !known) {
        return;
    }
    members.require(side == 0 ? localSequence : remoteSequence, start);
    join.neighbour({vni, ip, *known, 0, sequences[side]}, side == 0 ? Side::local : Side::remote);
}

void readNeighbourObject(JsonText const & key, JsonValue & value, Vxlan::Vni vni, FrrJoin & join) {
    if (!isEntry(value)) {
        return;
    }
    if (auto const ip = someIp(key)) {
        return readNeighbour(value, vni, *ip, join);
    }
    leaveOut(join, vni, "IP address", key, anIpAddress);
}

} // namespace

void readFrrVnis(JsonReader & json, FrrJoin & join) {
    json.documentElements("a list of VNIs", [&](JsonValue & element) {
        auto const * const start = element.at();
        VniReader vni;
        element.members("a VNI",
                        [&](JsonText const & name, JsonValue & value) { vni.take(name, value); });
        vni.finish(start, join);
    });
}

void readFrrVni(JsonReader & json, FrrJoin & join) {
    auto const * const start = json.at();
    VniReader vni;
    json.document([&](JsonText const & name, JsonValue & value) { vni.take(name, value); });
    vni.finish(start, join);
}

void readFrrMacs(JsonReader & json, bool detailed, FrrJoin & join) {
    eachVni(json, join, [&](Vxlan::Vni vni, JsonValue & value) {
        auto const * const start = value.at();
        KnownMembers members(macsName);
        value.members(anEntry, [&](JsonText const & name, JsonValue & member) {
            readMacsMember(name, member, vni, detailed, members, join);
        });
        members.require(0, start);
    });
}

void readFrrMacsOfVni(JsonReader & json, Vxlan::Vni vni, FrrJoin & join) {
    auto const * const start = json.at();
    KnownMembers members(macsName);
    json.document([&](JsonText const & name, JsonValue & value) {
        readMacsMember(name, value, vni, false, members, join);
    });
    members.require(0, start);
}

void readFrrMac(JsonReader & json, Vxlan::Vni vni, FrrJoin & join) {
    json.document([&](JsonText const & key, JsonValue & value) {
        readMacObject(key, value, vni, true, join);
    });
}

void readFrrSegments(JsonReader & json, FrrJoin & join) {
    json.documentElements("a list of Ethernet segments",
                          [&](JsonValue & element) { readSegment(element, join); });
}

void readFrrNeighbours(JsonReader & json, FrrJoin & join) {
    eachVni(json, join, [&](Vxlan::Vni vni, JsonValue & value) {
        value.members(anEntry, [&](JsonText const & key, JsonValue & entry) {
            readNeighbourObject(key, entry, vni, join);
        });
    });
}

void readFrrNeighboursOfVni(JsonReader & json, Vxlan::Vni vni, FrrJoin & join) {
    json.document([&](JsonText const & key, JsonValue & value) {
        readNeighbourObject(key, value, vni, join);
    });
}

} // namespace vxshow
