#include "vxshow/sources/frr/Macs.h"

#include "vxshow/sources/frr/Entries.h"
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
    bool hasVtep = false;
    std::optional<Nolt::IpAddr> vtep = {}; ///< nullopt if it is invalid, too
    std::string segment = {};
};

void takeVtep(text::JsonText const & text, MacEntry & into) {
    into.hasVtep = true;
    into.vtep = text::tryReadIpv4(text);
    if (!into.vtep) {
        leaveOut(into.join, into.vni, into.mac.stringValue() + " at", text.text(),
                 text::anIpv4Address);
    }
}

template <class TypeMember>
constexpr auto macObject(TypeMember type) {
    return text::lenientObject(
        anEntry, type, localSequenceMember, remoteSequenceMember,
        text::optionalMember("remoteVtep",
                             [](text::JsonValue & value, MacEntry & into) {
                                 takeVtep(value.text(text::anIpv4Address), into);
                             }),
        text::optionalMember("esi", [](text::JsonValue & value, MacEntry & into) {
            into.segment = value.text("an Ethernet segment").text();
        }));
}

constexpr auto briefMacObject = macObject(requiredType);

/// With details, an entry can be without a type: its place is unknown.
constexpr auto detailedMacObject = macObject(optionalType);

/// Counts the entry, which starts at `start`.
void takeEntry(MacEntry const & entry, char const * start) {
    if (!entry.side.isKnown()) {
        return;
    }
    auto const moves = entry.side.sequence(start);
    if (entry.side.side() == Side::local) {
        return entry.join.mac({entry.vni, entry.mac, Side::local, {}, moves, entry.segment});
    }
    if (!entry.hasVtep) {
        text::refuseWithout("remoteVtep", start);
    }
    if (entry.vtep) {
        entry.join.mac({entry.vni, entry.mac, Side::remote, *entry.vtep, moves, entry.segment});
    }
}

void readEntry(text::JsonText const & key, text::JsonValue & value, Vxlan::Vni vni, bool detailed,
               Collector & join) {
    join.step();
    if (!isEntry(value)) {
        return;
    }
    auto const mac = hostMac(key);
    if (!mac) {
        return leaveOut(join, vni, "MAC", key.text(), text::anEthernetAddress);
    }
    if (!join.takes(vni, *mac)) {
        return;
    }
    auto const * const start = value.at();
    MacEntry entry{vni, *mac, join};
    if (detailed) {
        detailedMacObject.read(value, entry);
    } else {
        briefMacObject.read(value, entry);
    }
    takeEntry(entry, start);
}

/// A VNI, one member of which has its MAC addresses.
constexpr auto vniMacsObject = text::lenientObject(
    anEntry, text::requiredMember("macs", [](text::JsonValue & value, Vxlan::Vni vni, bool detailed,
                                             Collector & join) {
        value.members(text::anObjectByMac,
                      [&](text::JsonText const & key, text::JsonValue & entry) {
                          readEntry(key, entry, vni, detailed, join);
                      });
    }));

} // namespace

void readMacs(text::JsonReader & json, bool detailed, Collector & join) {
    eachVni(json, join, [&](Vxlan::Vni vni, text::JsonValue & value) {
        vniMacsObject.read(value, vni, detailed, join);
    });
}

void readMacsOfVni(text::JsonReader & json, Vxlan::Vni vni, Collector & join) {
    vniMacsObject.read(json, vni, false, join);
}

void readMac(text::JsonReader & json, Vxlan::Vni vni, Collector & join) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        readEntry(key, value, vni, true, join);
    });
}

} // namespace vxshow::sources::frr
