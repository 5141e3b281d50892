#include "vxshow/sources/frr/Vnis.h"

#include "vxshow/sources/frr/Entries.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/Quoting.h"

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
    bool hasVtepIp = false;
    bool hasLocalVtepIp = false;
    Nolt::IpAddr address = {};
    std::vector<Nolt::IpAddr> floods = {};
    std::vector<std::string> noAddresses = {};
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

void takeAddress(text::JsonText const & text, VniMembers & into) {
    if (auto const address = text::tryReadIpv4(text)) {
        into.address = *address;
    } else {
        into.noAddresses.push_back(text::shownInQuotes(text.text()));
    }
}

void takeFloods(text::JsonValue & value, VniMembers & into, Collector & join) {
    value.texts("a list of IPv4 addresses", text::anIpv4Address, [&](text::JsonText const & text) {
        join.step();
        auto const address = text::tryReadIpv4(text);
        if (address && !address->isZero()) {
            into.floods.push_back(*address);
        } else {
            into.noAddresses.push_back(text::shownInQuotes(text.text()));
        }
    });
}

/// The interface has one name in an L2 VNI and another in an L3 VNI.
constexpr auto interfaceMember(text::MemberName name) {
    return text::optionalMember(name, [](text::JsonValue & value, VniMembers & into, Collector &) {
        takeInterface(value.text(aText).text(), into);
    });
}

/// `isThere` is set when the VNI has the member.
constexpr auto addressMember(text::MemberName name, bool VniMembers::*isThere) {
    return text::optionalMember(name,
                                [isThere](text::JsonValue & value, VniMembers & into, Collector &) {
                                    into.*isThere = true;
                                    takeAddress(value.text(aText), into);
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
    text::requiredMember("vrf", [](text::JsonValue & value, VniMembers & into,
                                   Collector &) { into.vrf = value.text(aText).text(); }),
    interfaceMember("sviInterface"), interfaceMember("sviIntf"),
    addressMember("vtepIp", &VniMembers::hasVtepIp),
    addressMember("localVtepIp", &VniMembers::hasLocalVtepIp),
    // Despite its name, this member is the list, not its length.
    text::optionalMember("numRemoteVteps", takeFloods));

/// `start` is where the object of the VNI starts.
void takeVni(VniMembers const & read, char const * start, Collector & join) {
    if (!(read.isL3 ? read.hasLocalVtepIp : read.hasVtepIp)) {
        text::refuseWithout(read.isL3 ? "localVtepIp" : "vtepIp", start);
    }
    Vxlan::Vni const vni(read.vni);
    for (auto const & text : read.noAddresses) {
        join.leaveOut("VNI " + std::to_string(read.vni) + ": VTEP " + text + ", expected " +
                      std::string(text::anIpv4Address));
    }
    if (read.isL3) {
        return join.l3Vni(vni, {read.vrf, read.interface, read.address});
    }
    join.l2Vni(vni, {read.vrf, read.interface, read.address, read.floods});
}

} // namespace

void readVnis(text::JsonReader & json, Collector & join) {
    json.documentElements("a list of VNIs", [&](text::JsonValue & element) {
        join.step();
        auto const * const start = element.at();
        VniMembers read;
        vniObject.read(element, read, join);
        takeVni(read, start, join);
    });
}

void readVni(text::JsonReader & json, Collector & join) {
    auto const * const start = json.at();
    VniMembers read;
    vniObject.read(json, read, join);
    takeVni(read, start, join);
}

} // namespace vxshow::sources::frr
