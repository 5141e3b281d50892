#include "vxshow/sources/frr/Segments.h"

#include "vxshow/sources/frr/Entries.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/Quoting.h"

namespace vxshow::sources::frr {

namespace {

void takeVtep(text::JsonText const & text, std::vector<Nolt::IpAddr> & vteps, Collector & join) {
    auto const address = text::tryReadIpv4(text);
    if (address && !address->isZero()) {
        return vteps.push_back(*address);
    }
    join.leaveOut("Ethernet segment: VTEP " + text::shownInQuotes(text.text()) + ", expected " +
                  std::string(text::anIpv4Address));
}

struct Segment {
    std::string esi = {};
    std::vector<Nolt::IpAddr> vteps = {};
};

constexpr auto vtepObject = text::lenientObject(
    "a VTEP",
    text::requiredMember("vtep", [](text::JsonValue & value, Segment & into, Collector & join) {
        takeVtep(value.text(text::anIpv4Address), into.vteps, join);
    }));

constexpr auto segmentObject = text::lenientObject(
    "an Ethernet segment",
    text::requiredMember("esi",
                         [](text::JsonValue & value, Segment & into, Collector &) {
                             into.esi = value.text("an Ethernet segment's identifier").text();
                         }),
    text::optionalMember("vteps", [](text::JsonValue & value, Segment & into, Collector & join) {
        value.elements("a list of VTEPs", [&](text::JsonValue & one) {
            join.step();
            vtepObject.read(one, into, join);
        });
    }));

void readSegment(text::JsonValue & value, Collector & join) {
    join.step();
    Segment read;
    segmentObject.read(value, read, join);
    join.segment(std::move(read.esi), std::move(read.vteps));
}

} // namespace

void readSegments(text::JsonReader & json, Collector & join) {
    json.documentElements("a list of Ethernet segments",
                          [&](text::JsonValue & element) { readSegment(element, join); });
}

} // namespace vxshow::sources::frr
