#include "vxshow/sources/frr/Macs.h"

#include "vxshow/sources/frr/Entries.h"
#include "vxshow/text/JsonAddresses.h"

namespace vxshow::sources::frr {

namespace {

using Side = Collector::Side;

/// The entry of a MAC address, member by member.
class MacEntry {
public:
    MacEntry(Vxlan::Vni vni, Nolt::EthAddr mac, Collector & join) noexcept
        : vni_(vni), mac_(mac), join_(join) {}

    void take(text::JsonText const & name, text::JsonValue & value) {
        auto const known = members_.take(name);
        switch (known) {
        case remoteVtep:
            readVtep(value.text(text::anIpv4Address));
            break;
        case esi:
            segment_ = value.text("an Ethernet segment").text();
            break;
        default:
            side_.take(known, value);
        }
    }

    /// With details, an entry can be without a type: its place is unknown.
    void finish(char const * start, bool detailed) const {
        if (!detailed) {
            members_.require(EntrySide::type, start);
        }
        if (!side_.isKnown()) {
            return;
        }
        auto const moves = side_.sequence(members_, start);
        if (side_.side() == Side::local) {
            return join_.mac({vni_, mac_, Side::local, {}, moves, segment_});
        }
        members_.require(remoteVtep, start);
        if (vtep_) {
            join_.mac({vni_, mac_, Side::remote, *vtep_, moves, segment_});
        }
    }

private:
    enum Name : std::size_t { remoteVtep = EntrySide::end, esi };

    static constexpr auto names = entryNames("remoteVtep", "esi");

    void readVtep(text::JsonText const & text) {
        vtep_ = ipv4(text);
        if (!vtep_) {
            leaveOut(join_, vni_, mac_.stringValue() + " at", text.text(), text::anIpv4Address);
        }
    }

    Vxlan::Vni vni_;
    Nolt::EthAddr mac_;
    Collector & join_;
    text::KnownMembers members_{names};
    EntrySide side_;
    std::optional<Nolt::IpAddr> vtep_;
    std::string segment_;
};

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
    MacEntry entry(vni, *mac, join);
    value.members(anEntry, [&](text::JsonText const & name, text::JsonValue & member) {
        entry.take(name, member);
    });
    entry.finish(start, detailed);
}

/// Reads the members of a VNI, one of which has its MAC addresses.
class MacsReader {
public:
    MacsReader(Vxlan::Vni vni, bool detailed, Collector & join) noexcept
        : vni_(vni), detailed_(detailed), join_(join) {}

    void take(text::JsonText const & name, text::JsonValue & value) {
        if (members_.take(name) == 0) {
            value.members(text::anObjectByMac,
                          [&](text::JsonText const & key, text::JsonValue & entry) {
                              readEntry(key, entry, vni_, detailed_, join_);
                          });
        }
    }

    void finish(char const * start) const { members_.require(0, start); }

private:
    static constexpr std::array<text::MemberName, 1> names{"macs"};

    Vxlan::Vni vni_;
    bool detailed_;
    Collector & join_;
    text::KnownMembers members_{names};
};

} // namespace

void readMacs(text::JsonReader & json, bool detailed, Collector & join) {
    eachVni(json, join, [&](Vxlan::Vni vni, text::JsonValue & value) {
        auto const * const start = value.at();
        MacsReader macs(vni, detailed, join);
        value.members(anEntry, [&](text::JsonText const & name, text::JsonValue & member) {
            macs.take(name, member);
        });
        macs.finish(start);
    });
}

void readMacsOfVni(text::JsonReader & json, Vxlan::Vni vni, Collector & join) {
    auto const * const start = json.at();
    MacsReader macs(vni, false, join);
    json.document(
        [&](text::JsonText const & name, text::JsonValue & value) { macs.take(name, value); });
    macs.finish(start);
}

void readMac(text::JsonReader & json, Vxlan::Vni vni, Collector & join) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        readEntry(key, value, vni, true, join);
    });
}

} // namespace vxshow::sources::frr
