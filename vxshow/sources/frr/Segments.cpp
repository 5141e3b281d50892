#include "vxshow/sources/frr/Segments.h"

#include "vxshow/sources/frr/Entries.h"
#include "vxshow/sources/frr/VtepText.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/Quoting.h"

namespace vxshow::sources::frr {

namespace {

struct Segment {
    std::string esi = {};
    Collector::SegmentVteps vteps = {};
};

void takeVtep(text::JsonText const & text, Collector::SegmentVteps & vteps, Collector & join) {
    auto const vtep = readVtepText(text);
    if (vtep.kind == VtepText::Kind::ipv4) {
        return vteps.ipv4.push_back(vtep.address);
    }
    if (vtep.kind == VtepText::Kind::ipv6) {
        vteps.ipv6.emplace_back(text.text());
        return;
    }
    join.leaveOut(Subject::remoteMacs, "Ethernet segment: VTEP " +
                                           text::shownInQuotes(text.text()) + ", expected " +
                                           std::string(text::anIpv4Address));
}

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
