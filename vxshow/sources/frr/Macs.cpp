#include "vxshow/sources/frr/Macs.h"

#include "vxshow/sources/frr/Entries.h"
#include "vxshow/sources/frr/Uptime.h"
#include "vxshow/sources/frr/VtepText.h"
#include "vxshow/text/JsonAddresses.h"

namespace vxshow::sources::frr {

namespace {

using Side = Collector::Side;

/// What is read of the entry of a MAC address.
struct MacEntry {
    Vxlan::Vni vni;
    Nolt::EthAddr mac;
    Collector & join;
    EntrySide side = {};
    std::optional<VtepText> vtep = {};
    std::string segment = {};
    state::MacDetails details = {vni, mac};
};

void takeVtep(text::JsonText const & text, MacEntry & into) {
    into.vtep = readVtepText(text);
    if (into.vtep->kind == VtepText::Kind::other) {
        leaveOut(into.join, Subject::remoteMacs, into.vni, into.mac.stringValue() + " at",
                 text.text(), text::anIpv4Address);
    } else if (into.vtep->kind == VtepText::Kind::ipv6) {
        leaveOutIpv6(into.join, Subject::remoteMacs, into.vni, into.mac.stringValue(), text.text());
    }
}

constexpr auto segmentMember(text::MemberName name) {
    return text::optionalMember(name, [](text::JsonValue & value, MacEntry & into) {
        into.segment = value.text("an Ethernet segment").text();
        into.details.segment =
            state::EthernetSegment::tryFromString(into.segment).value_or(state::EthernetSegment());
    });
}

constexpr auto flagMember(text::MemberName name, bool state::MacDetails::*flag) {
    return text::optionalMember(name, [flag](text::JsonValue & value, MacEntry & into) {
        into.details.*flag = value.boolean();
    });
}

/// Of an address behind an Ethernet segment, `remoteVtep` is 0.0.0.0 in FRR 8.4, and only the
/// details have the segment, as `esi`. Later versions have `remoteEs` instead of `remoteVtep`.
constexpr auto macObject = text::lenientObject(
    anEntry, typeMember, localSequenceMember, remoteSequenceMember,
    text::optionalMember("remoteVtep",
                         [](text::JsonValue & value, MacEntry & into) {
                             takeVtep(value.text(text::anIpv4Address), into);
                         }),
    segmentMember("remoteEs"), segmentMember("esi"),
    flagMember("isDuplicate", &state::MacDetails::isDuplicate),
    flagMember("stickyMac", &state::MacDetails::isSticky),
    flagMember("localInactive", &state::MacDetails::isInactive),
    text::optionalMember("uptime", [](text::JsonValue & value, MacEntry & into) {
        into.details.age = readUptime(value.text("a time").text());
    }));

/// Counts the entry, which starts at `start`.
void takeEntry(MacEntry const & entry, char const * start) {
    if (!entry.side.isKnown()) {
        return;
    }
    auto const moves = entry.side.sequence(start);
    if (entry.side.side() == Side::local) {
        entry.join.macDetails(entry.details);
        return entry.join.mac({entry.vni, entry.mac, Side::local, {}, moves, entry.segment});
    }
    if (!entry.vtep && entry.segment.empty()) {
        text::refuseWithout("remoteVtep", start);
    }
    auto const vtep = entry.vtep.value_or(VtepText{VtepText::Kind::none});
    if (vtep.kind == VtepText::Kind::ipv4 || vtep.kind == VtepText::Kind::none) {
        entry.join.macDetails(entry.details);
        entry.join.mac({entry.vni, entry.mac, Side::remote, vtep.address, moves, entry.segment});
    }
}

void readMacEntry(text::JsonText const & key, text::JsonValue & value, Vxlan::Vni vni,
                  Collector & join) {
    join.step();
    if (!isEntry(value)) {
        return;
    }
    auto const mac = hostMac(key);
    if (!mac) {
        return leaveOut(join, macsOfBothSides, vni, "MAC", key.text(), text::anEthernetAddress);
    }
    if (!join.takes(vni, *mac)) {
        return;
    }
    auto const * const start = value.at();
    MacEntry entry{vni, *mac, join};
    macObject.read(value, entry);
    takeEntry(entry, start);
}

/// A VNI, one member of which has its MAC addresses.
constexpr auto vniMacsObject = text::lenientObject(
    anEntry,
    text::optionalMember("macs", [](text::JsonValue & value, Vxlan::Vni vni, Collector & join) {
        value.members(text::anObjectByMac,
                      [&](text::JsonText const & key, text::JsonValue & entry) {
                          readMacEntry(key, entry, vni, join);
                      });
    }));

} // namespace

void readMacs(text::JsonReader & json, Collector & join) {
    eachVni(json, macsOfBothSides, join,
            [&](Vxlan::Vni vni, text::JsonValue & value) { vniMacsObject.read(value, vni, join); });
}

void readMacsOfVni(text::JsonReader & json, Vxlan::Vni vni, Collector & join) {
    vniMacsObject.read(json, vni, join);
}

void readMac(text::JsonReader & json, Vxlan::Vni vni, Collector & join) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        readMacEntry(key, value, vni, join);
    });
}

} // namespace vxshow::sources::frr
