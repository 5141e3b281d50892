#include "vxshow/sources/frr/Segments.h"

#include "vxshow/sources/frr/Entries.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/Quoting.h"

namespace vxshow::sources::frr {

namespace {

void takeVtep(text::JsonText const & text, std::vector<Nolt::IpAddr> & vteps, Collector & join) {
    auto const address = ipv4(text);
    if (address && !address->isZero()) {
        return vteps.push_back(*address);
    }
    join.leaveOut("Ethernet segment: VTEP " + text::shownInQuotes(text.text()) + ", expected " +
                  std::string(text::anIpv4Address));
}

void readVtep(text::JsonValue & value, std::vector<Nolt::IpAddr> & vteps, Collector & join) {
    static constexpr std::array<text::MemberName, 1> names{"vtep"};
    join.step();
    auto const * const start = value.at();
    text::KnownMembers members(names);
    value.members("a VTEP", [&](text::JsonText const & name, text::JsonValue & member) {
        if (members.take(name) == 0) {
            takeVtep(member.text(text::anIpv4Address), vteps, join);
        }
    });
    members.require(0, start);
}

void readSegment(text::JsonValue & value, Collector & join) {
    enum Name : std::size_t { esi, vteps };

    static constexpr std::array<text::MemberName, 2> names{"esi", "vteps"};
    join.step();
    auto const * const start = value.at();
    text::KnownMembers members(names);
    std::string segment;
    std::vector<Nolt::IpAddr> addresses;
    value.members(
        "an Ethernet segment", [&](text::JsonText const & name, text::JsonValue & member) {
            switch (members.take(name)) {
            case esi:
                segment = member.text("an Ethernet segment's identifier").text();
                break;
            case vteps:
                member.elements("a list of VTEPs",
                                [&](text::JsonValue & one) { readVtep(one, addresses, join); });
                break;
            default:
                break;
            }
        });
    members.require(esi, start);
    join.segment(std::move(segment), std::move(addresses));
}

} // namespace

void readSegments(text::JsonReader & json, Collector & join) {
    json.documentElements("a list of Ethernet segments",
                          [&](text::JsonValue & element) { readSegment(element, join); });
}

} // namespace vxshow::sources::frr
