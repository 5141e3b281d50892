#include "vxshow/sources/frr/Neighbours.h"

#include "vxshow/sources/frr/Entries.h"
#include "vxshow/text/JsonAddresses.h"

namespace vxshow::sources::frr {

namespace {

std::optional<Nolt::IpGenAddr> someIp(text::JsonText const & text) {
    auto const ip = Nolt::IpGenAddr::tryFromString(text.text());
    return ip && !ip->isNone() ? ip : std::nullopt;
}

/// The entry of an IP address, member by member.
class NeighbourEntry {
public:
    NeighbourEntry(Vxlan::Vni vni, Nolt::IpGenAddr const & ip, Collector & join) noexcept
        : vni_(vni), ip_(ip), join_(join) {}

    void take(text::JsonText const & name, text::JsonValue & value) {
        auto const known = members_.take(name);
        switch (known) {
        case state:
            readState(value.text("\"active\" or \"inactive\""));
            break;
        case mac:
            text::readMac(value.text(text::anEthernetAddress));
            break;
        default:
            side_.take(known, value);
        }
    }

    void finish(char const * start) const {
        members_.require(EntrySide::type, start);
        members_.require(state, start);
        members_.require(mac, start);
        if (!side_.isKnown() || !isActive_) {
            return;
        }
        if (!mac_) {
            return leaveOut(join_, vni_, ip_.stringValue() + " has MAC", macText_,
                            text::anEthernetAddress);
        }
        auto const changes = side_.sequence(members_, start);
        join_.neighbour({vni_, ip_, *mac_, 0, changes}, side_.side());
    }

private:
    enum Name : std::size_t { state = EntrySide::end, mac };

    static constexpr auto names = entryNames("state", "mac");
    static constexpr std::array<text::MemberName, 2> states{"active", "inactive"};

    void readState(text::JsonText const & text) {
        isActive_ = states[0].standsAt(text.content());
        if (!isActive_ && !states[1].standsAt(text.content())) {
            text.refuse(text::oneOf(states));
        }
    }

    void readMac(text::JsonText const & text) {
        mac_ = hostMac(text);
        if (!mac_) {
            macText_ = text.text();
        }
    }

    Vxlan::Vni vni_;
    Nolt::IpGenAddr ip_;
    Collector & join_;
    text::KnownMembers members_{names};
    EntrySide side_;
    bool isActive_ = false;
    std::optional<Nolt::EthAddr> mac_;
    std::string macText_; ///< if it is invalid
};

void readEntry(text::JsonText const & key, text::JsonValue & value, Vxlan::Vni vni,
               Collector & join) {
    join.step();
    if (!isEntry(value)) {
        return;
    }
    auto const ip = someIp(key);
    if (!ip) {
        return leaveOut(join, vni, "IP address", key.text(), text::anIpAddress);
    }
    auto const * const start = value.at();
    NeighbourEntry entry(vni, *ip, join);
    value.members(anEntry, [&](text::JsonText const & name, text::JsonValue & member) {
        entry.take(name, member);
    });
    entry.finish(start);
}

} // namespace

void readNeighbours(text::JsonReader & json, Collector & join) {
    eachVni(json, join, [&](Vxlan::Vni vni, text::JsonValue & value) {
        value.members(anEntry, [&](text::JsonText const & key, text::JsonValue & entry) {
            readEntry(key, entry, vni, join);
        });
    });
}

void readNeighboursOfVni(text::JsonReader & json, Vxlan::Vni vni, Collector & join) {
    json.document([&](text::JsonText const & key, text::JsonValue & value) {
        readEntry(key, value, vni, join);
    });
}

} // namespace vxshow::sources::frr
