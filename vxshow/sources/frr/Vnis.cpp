#include "vxshow/sources/frr/Vnis.h"

#include "vxshow/sources/frr/Entries.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/Quoting.h"

namespace vxshow::sources::frr {

namespace {

constexpr std::string_view aText = "a text";

/// A VNI, member by member; its kind is one of the members.
class VniReader {
public:
    explicit VniReader(Collector & join) noexcept : join_(join) {}

    void take(text::JsonText const & name, text::JsonValue & value) {
        switch (members_.take(name)) {
        case vni:
            vni_ = value.number(Vxlan::Vni::max);
            break;
        case type:
            readKind(value.text(text::oneOf(kinds)));
            break;
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

    void finish(char const * start) {
        members_.require(vni, start);
        members_.require(type, start);
        members_.require(vrf, start);
        members_.require(isL3_ ? localVtepIp : vtepIp, start);
        Vxlan::Vni const number(vni_);
        for (auto const & text : noAddresses_) {
            join_.leaveOut("VNI " + std::to_string(vni_) + ": VTEP " + text + ", expected " +
                           std::string(text::anIpv4Address));
        }
        if (isL3_) {
            return join_.l3Vni(number, {vrf_, interface_, address_});
        }
        join_.l2Vni(number, {vrf_, interface_, address_, floods_});
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

    static constexpr std::array<text::MemberName, 8> names{
        "vni", "type", "vrf", "sviInterface", "sviIntf", "vtepIp", "localVtepIp", "numRemoteVteps"};
    static constexpr std::array<text::MemberName, 2> kinds{"L2", "L3"};

    void readKind(text::JsonText const & text) {
        isL3_ = text.text() == kinds[1].text();
        if (!isL3_ && text.text() != kinds[0].text()) {
            text.refuse(text::oneOf(kinds));
        }
    }

    /// A VNI whose VXLAN device is in no bridge has no interface: then an L2 VNI has no such
    /// member, and that of an L3 VNI is "None".
    void readInterface(std::string_view name) {
        if (name != "None") {
            interface_ = name;
        }
    }

    void readAddress(text::JsonText const & text) {
        if (auto const address = ipv4(text)) {
            address_ = *address;
        } else {
            noAddresses_.push_back(text::shownInQuotes(text.text()));
        }
    }

    /// Despite its name, this member is the list, not its length.
    void readFloods(text::JsonValue & value) {
        value.texts("a list of IPv4 addresses", text::anIpv4Address,
                    [&](text::JsonText const & text) {
                        join_.step();
                        auto const address = ipv4(text);
                        if (address && !address->isZero()) {
                            floods_.push_back(*address);
                        } else {
                            noAddresses_.push_back(text::shownInQuotes(text.text()));
                        }
                    });
    }

    Collector & join_;
    text::KnownMembers members_{names};
    bool isL3_ = false;
    Vex::U32 vni_ = 0;
    std::string vrf_;
    std::string interface_;
    Nolt::IpAddr address_;
    std::vector<Nolt::IpAddr> floods_;
    std::vector<std::string> noAddresses_;
};

} // namespace

void readVnis(text::JsonReader & json, Collector & join) {
    json.documentElements("a list of VNIs", [&](text::JsonValue & element) {
        join.step();
        auto const * const start = element.at();
        VniReader vni(join);
        element.members("a VNI", [&](text::JsonText const & name, text::JsonValue & value) {
            vni.take(name, value);
        });
        vni.finish(start);
    });
}

void readVni(text::JsonReader & json, Collector & join) {
    auto const * const start = json.at();
    VniReader vni(join);
    json.document(
        [&](text::JsonText const & name, text::JsonValue & value) { vni.take(name, value); });
    vni.finish(start);
}

} // namespace vxshow::sources::frr
