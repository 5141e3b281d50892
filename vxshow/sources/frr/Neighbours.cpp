#include "vxshow/sources/frr/Neighbours.h"

#include "vxshow/sources/frr/Entries.h"
#include "vxshow/text/JsonAddresses.h"

namespace vxshow::sources::frr {

namespace {

constexpr Subjects bindingsOfBothSides = Subject::localBindings | Subject::remoteBindings;

std::optional<Nolt::IpGenAddr> someIp(text::JsonText const & text) {
    auto const ip = Nolt::IpGenAddr::tryFromString(text.text());
    return ip && !ip->isNone() ? ip : std::nullopt;
}

/// What is read of the entry of an IP address.
struct NeighbourEntry {
    EntrySide side = {};
    std::optional<bool> isActive = {};
    bool hasMac = false;
    std::optional<Nolt::EthAddr> mac = {};
    std::string macText = {}; ///< if it is invalid
};

constexpr std::array<text::MemberName, 2> states{"active", "inactive"};

void takeState(text::JsonText const & text, NeighbourEntry & into) {
    into.isActive = states[0].standsAt(text.content());
    if (!*into.isActive && !states[1].standsAt(text.content())) {
        text.refuse(text::oneOf(states));
    }
}

void takeMac(text::JsonText const & text, NeighbourEntry & into) {
    into.hasMac = true;
    into.mac = hostMac(text);
    if (!into.mac) {
        into.macText = text.text();
    }
}

constexpr auto neighbourObject = text::lenientObject(
    anEntry, typeMember, localSequenceMember, remoteSequenceMember,
    text::optionalMember("state",
                         [](text::JsonValue & value, NeighbourEntry & into) {
                             takeState(value.text("\"active\" or \"inactive\""), into);
                         }),
    text::optionalMember("mac", [](text::JsonValue & value, NeighbourEntry & into) {
        takeMac(value.text(text::anEthernetAddress), into);
    }));

void readNeighbour(text::JsonText const & key, text::JsonValue & value, Vxlan::Vni vni,
                   Collector & join) {
    join.step();
    if (!isEntry(value)) {
        return;
    }
    auto const ip = someIp(key);
    if (!ip) {
        return leaveOut(join, bindingsOfBothSides, vni, "IP address", key.text(),
                        text::anIpAddress);
    }
    auto const * const start = value.at();
    NeighbourEntry entry;
    neighbourObject.read(value, entry);
    if (!entry.side.isKnown()) {
        return;
    }
    if (!entry.isActive || !entry.hasMac) {
        text::refuseWithout(entry.isActive ? "mac" : "state", start);
    }
    if (!*entry.isActive) {
        return;
    }
    if (!entry.mac) {
        auto const aboutSide = entry.side.side() == Collector::Side::local
                                   ? Subject::localBindings
                                   : Subject::remoteBindings;
        return leaveOut(join, aboutSide, vni, ip->stringValue() + " has MAC", entry.macText,
                        text::anEthernetAddress);
    }
    auto const changes = entry.side.sequence(start);
    join.neighbour({vni, *ip, *entry.mac, 0, changes}, entry.side.side());
}

} // namespace

void readNeighbours(text::JsonReader & json, Collector & join) {
    eachVni(json, bindingsOfBothSides, join, [&](Vxlan::Vni vni, text::JsonValue & value) {
        value.members(anEntry, [&](text::JsonText const & key, text::JsonValue & entry) {
            readNeighbour(key, entry, vni, join);
        });
    });
}

void readNeighboursOfVni(text::JsonReader & json, Vxlan::Vni vni, Collector & join) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        readNeighbour(key, value, vni, join);
    });
}

} // namespace vxshow::sources::frr
