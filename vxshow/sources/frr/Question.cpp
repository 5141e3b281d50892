#include "vxshow/sources/frr/Question.h"

#include "vxshow/sources/Subjects.h"

#include <algorithm>

namespace vxshow::sources::frr {

namespace {

using Kind = Question::Kind;

/// VNI 0 is not a VNI to zebra, which would reject the command.
bool isAskable(Vxlan::Vni vni) {
    return vni.value() != 0;
}

void addTables(state::Selection const & selection, std::vector<Question> & questions) {
    if (selection.vni.isNone()) {
        if (selection.macTables) {
            questions.push_back({selection.macDetails ? Kind::macsInDetail : Kind::macs});
            questions.push_back({Kind::segments});
        }
        if (selection.arpTables) {
            questions.push_back({Kind::neighbours});
        }
        return;
    }
    auto const vni = selection.vni.vni();
    if (!isAskable(vni)) {
        return;
    }
    if (selection.macTables && selection.mac.isZero()) {
        questions.push_back({Kind::macsOfVni, vni});
        questions.push_back({Kind::segments});
    } else if (selection.macTables) {
        questions.push_back({Kind::mac, vni, selection.mac});
        questions.push_back({Kind::segments});
    }
    if (selection.arpTables) {
        questions.push_back({Kind::neighboursOfVni, vni});
    }
}

bool isWordCharacter(char c) {
    return c > ' ' && c <= '~' && c != '|';
}

} // namespace

std::string Question::command() const {
    auto const ofVni = [&] { return std::to_string(vni.value()); };
    switch (kind) {
    case Kind::evpn:
        return "show evpn json";
    case Kind::vnis:
        return "show evpn vni detail json";
    case Kind::vni:
        return "show evpn vni " + ofVni() + " json";
    case Kind::macs:
        return "show evpn mac vni all json";
    case Kind::macsOfVni:
        return "show evpn mac vni " + ofVni() + " json";
    case Kind::macsInDetail:
        return "show evpn mac vni all detail json";
    case Kind::mac:
        return "show evpn mac vni " + ofVni() + " mac " + std::string(mac.stringValue()) + " json";
    case Kind::segments:
        return "show evpn es detail json";
    case Kind::neighbours:
        return "show evpn arp-cache vni all json";
    case Kind::neighboursOfVni:
        return "show evpn arp-cache vni " + ofVni() + " json";
    case Kind::vrfs:
        return "show vrf vni json";
    case Kind::devices:
        return "show interface vrf all json";
    case Kind::deviceStates:
        return "show interface vrf all brief json";
    case Kind::interfaces:
        return "show interface vrf " + vrf + " json";
    case Kind::routes:
        return "show ip route vrf " + vrf + " json";
    case Kind::routesIpv6:
        return "show ipv6 route vrf " + vrf + " json";
    }
    return {};
}

bool isVrfWord(std::string_view name) noexcept {
    constexpr std::string_view every = "all";
    return !every.starts_with(name) && std::all_of(name.begin(), name.end(), isWordCharacter);
}

bool asksForOneVni(state::Selection const & selection) {
    return !selection.routers && !selection.vni.isNone() && isAskable(selection.vni.vni());
}

std::vector<Question> firstQuestions(state::Selection const & selection, state::Role role) {
    std::vector<Question> questions;
    if (asksForOneVni(selection)) {
        // An unknown VNI has the same answer as one of a zebra whose EVPN is not active.
        questions.push_back({Kind::evpn});
        questions.push_back({Kind::vni, selection.vni.vni()});
    } else {
        questions.push_back({Kind::vnis});
    }
    if (selection.received || selection.advertised) {
        addTables(selection, questions);
    }
    if (selection.routers) {
        questions.push_back({Kind::vrfs});
    }
    if (selection.macTables && showsLocal(selection, role)) {
        // For the list of VTEPs that the others flood to.
        questions.push_back({Kind::deviceStates});
    }
    return questions;
}

} // namespace vxshow::sources::frr
