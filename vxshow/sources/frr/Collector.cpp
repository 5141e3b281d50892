#include "vxshow/sources/frr/Collector.h"

#include "vxshow/sources/Failure.h"
#include "vxshow/text/Quoting.h"

#include <algorithm>

namespace vxshow::sources::frr {

namespace {

using Kind = Question::Kind;

std::string inVni(Vxlan::Vni vni, std::string_view what) {
    return std::string(what).append(" in VNI ").append(vni.stringValue());
}

/// fe80::/10 (RFC 4291, 2.5.6).
bool isLinkLocal(Nolt::IpGenAddr const & address) {
    return address.family() == Nolt::Family::ipv6 && address.high() >> 54 == 0x3FA;
}

/// Whether the interface belongs to the VNI.
template <class Vni>
bool isOf(Vni const & vni, std::string const & vrf, std::string const & interface) {
    return vni.vrf == vrf && vni.interfaceName == interface && !interface.empty();
}

} // namespace

void Collector::mac(MacRow const & row) {
    if (row.side == Side::local) {
        budget_.spend();
        local_.macs.push_back({row.vni, row.mac, {}, row.moves});
    } else if (!row.vtep.isZero()) {
        budget_.spend();
        remote_.macs.push_back({row.vni, row.mac, row.vtep, row.moves});
    } else {
        segmented_.push_back({{row.vni, row.mac}, std::string(row.segment), row.moves});
    }
}

void Collector::forgetSegmentedMac(Vxlan::Vni vni, Nolt::EthAddr mac) {
    MacKey const key(vni, mac);
    segmented_.erase(std::remove_if(segmented_.begin(), segmented_.end(),
                                    [&](Segmented const & one) {
                                        step();
                                        return one.key == key;
                                    }),
                     segmented_.end());
    std::erase_if(details_.macs, [&](state::MacDetails const & one) {
        step();
        return one.vni == vni && one.mac == mac;
    });
}

void Collector::forgetMacs() {
    budget_.giveBack(local_.macs.size() + remote_.macs.size());
    local_.macs.clear();
    remote_.macs.clear();
    segmented_.clear();
    details_.macs.clear();
}

void Collector::neighbour(IpBinding const & binding, Side side) {
    budget_.spend();
    (side == Side::local ? local_ : remote_).bindings.push_back(binding);
}

void Collector::vrf(std::string const & name, bool isDown) {
    if (!isVrfWord(name)) {
        return leaveOut(Subject::routers,
                        "VRF \"" + text::shownText(name) +
                            "\", expected a name of printable ASCII without blanks and \"|\", "
                            "not short for \"all\"");
    }
    vrfs_[name] = isDown;
}

/// Throws `Failure` if zebra has no VNIs, but should have.
void Collector::requireEvpn() const {
    constexpr std::string_view hint =
        "; expects_evpn = false in the fabric file accepts a source without EVPN";
    if (!isEvpnActive_) {
        throw Failure(std::string("EVPN is not active: zebra holds no VNIs, as when bgpd is down "
                                  "or does not advertise them")
                          .append(hint));
    }
    if (!vxlanDevices_.empty() && l2Vnis_.empty() && l3Vnis_.empty()) {
        throw Failure("EVPN is not active: zebra holds no VNIs, but there is the VXLAN device \"" +
                      text::shownText(*vxlanDevices_.begin()) + '"' + std::string(hint));
    }
}

bool Collector::isOfVni(std::string const & vrf, std::string const & interface) {
    auto const isIn = [&](auto const & vnis) {
        return std::any_of(vnis.begin(), vnis.end(), [&](auto const & entry) {
            step();
            return isOf(entry.second, vrf, interface);
        });
    };
    return isIn(l2Vnis_) || isIn(l3Vnis_);
}

void Collector::interface(std::string const & vrf, std::string const & name, Nolt::EthAddr mac,
                          std::vector<Nolt::IpGenAddrWithMask> const & addresses) {
    interfaces_[vrf].push_back({name, mac, addresses});
}

void Collector::route(std::string const & vrf, Nolt::IpGenPrefix const & prefix,
                      std::vector<Nolt::IpGenAddr> const & nexthops) {
    budget_.spend(std::max<std::size_t>(nexthops.size(), 1));
    routers_[vrf].routes[prefix].insert(nexthops.begin(), nexthops.end());
}

std::vector<Question> Collector::further() const {
    std::vector<Question> questions;
    if (isEvpnActive_ && l2Vnis_.empty() && l3Vnis_.empty() && !asksForOneVni(selection_)) {
        questions.push_back({Kind::devices});
    }
    auto const isOpen = [](Segmented const & one) { return one.segment.empty(); };
    auto const open = std::count_if(segmented_.begin(), segmented_.end(), isOpen);
    if (static_cast<std::size_t>(open) > mostSingleMacs) {
        questions.push_back({Kind::macsInDetail});
    } else {
        for (Segmented const & one : segmented_) {
            if (isOpen(one)) {
                questions.push_back({Kind::mac, one.key.first, one.key.second});
            }
        }
    }
    if (open != 0) {
        questions.push_back({Kind::segments});
    }
    for (auto const & [name, isDown] : vrfs_) {
        for (auto const kind : {Kind::interfaces, Kind::routes, Kind::routesIpv6}) {
            questions.push_back({kind, {}, {}, name});
        }
    }
    return questions;
}

void Collector::leaveOutDangling(Subjects about, std::string what) {
    fits_ = false;
    leaveOut(about, std::move(what));
}

void Collector::resolveSegments() {
    for (Segmented const & one : segmented_) {
        step();
        auto const found = segments_.find(one.segment);
        budget_.spend(found == segments_.end() ? 0 : found->second.ipv4.size());
    }
    for (Segmented const & one : segmented_) {
        step();
        auto const & [vni, mac] = one.key;
        auto const found = segments_.find(one.segment);
        if (found == segments_.end() || found->second.isEmpty()) {
            leaveOutDangling(Subject::remoteMacs,
                             inVni(vni, mac.stringValue()) +
                                 (one.segment.empty() ? ": no VTEP, expected an Ethernet segment"
                                                      : ": behind Ethernet segment \"" +
                                                            text::shownText(one.segment) +
                                                            "\", which has no known VTEP"));
            continue;
        }
        for (auto const vtep : found->second.ipv4) {
            step();
            remote_.macs.push_back({vni, mac, vtep, one.moves});
        }
        for (auto const & vtep : found->second.ipv6) {
            step();
            leaveOutIpv6(Subject::remoteMacs, inVni(vni, mac.stringValue()) + " at " + vtep);
        }
    }
}

/// Drops entries of VNIs that were created between two answers.
void Collector::dropUnknownVnis(SideFacts & side, Subjects macs, Subjects bindings) {
    auto const drop = [&](auto & facts, Subjects about, auto const & shown) {
        auto known = l2Vnis_.end();
        auto const isUnknown = [&](auto const & fact) {
            step();
            if (known == l2Vnis_.end() || known->first != fact.vni) {
                known = l2Vnis_.find(fact.vni);
            }
            if (known == l2Vnis_.end()) {
                leaveOutDangling(about, inVni(fact.vni, shown(fact)) + ", an unknown VNI");
            }
            return known == l2Vnis_.end();
        };
        facts.erase(std::remove_if(facts.begin(), facts.end(), isUnknown), facts.end());
    };
    drop(side.macs, macs, [](MacPlace const & place) { return place.mac.stringValue(); });
    drop(side.bindings, bindings,
         [](IpBinding const & binding) { return binding.ip.stringValue(); });
}

void Collector::placeLocal(SideFacts & local) {
    auto known = l2Vnis_.end();
    auto const hasNoVtep = [&](MacPlace & place) {
        step();
        if (known == l2Vnis_.end() || known->first != place.vni) {
            known = l2Vnis_.find(place.vni);
        }
        place.vtep = known->second.vtep;
        if (place.vtep.isZero() && known->second.ipv6Vtep.empty()) {
            leaveOut(Subject::localMacs, inVni(place.vni, place.mac.stringValue()) +
                                             ": local, but the VNI has no VTEP address");
        } else if (place.vtep.isZero()) {
            leaveOutIpv6(Subject::localMacs, inVni(place.vni, place.mac.stringValue()) + " at " +
                                                 known->second.ipv6Vtep);
        }
        return place.vtep.isZero();
    };
    local.macs.erase(std::remove_if(local.macs.begin(), local.macs.end(), hasNoVtep),
                     local.macs.end());
}

/// Whether the VXLAN device of the VNI is down. zebra then drops all entries of the VNI, so the
/// state of the device is asked for only if there are none.
bool Collector::isDown(L2Vni const & vni) const {
    return vni.isIdle && downDevices_.contains(vni.device);
}

void Collector::addVnis(SideFacts & local) {
    for (auto const & [vni, known] : l2Vnis_) {
        watch_.steps(1 + known.floods.size());
        budget_.spend(2 + (known.vtep.isZero() ? 0 : 1) + known.floods.size());
        local.vnis.push_back(vni);
        remote_.vnis.push_back(vni);
        if (!known.vtep.isZero() && !isDown(known)) {
            local.floods.push_back({vni, {}, known.vtep});
        }
        for (auto const vtep : known.floods) {
            remote_.floods.push_back({vni, {}, vtep});
        }
    }
}

void Collector::findPorts(std::string const & vrf, std::vector<PortsOfVni> & found) {
    auto const find = [&](Interface const & interface, auto const & vnis) {
        for (auto const & [vni, known] : vnis) {
            step();
            if (isOf(known, vrf, interface.name)) {
                budget_.spend(interface.addresses.size());
                found.push_back({&vrf, &interface, vni, known.vtep});
            }
        }
    };
    for (Interface const & interface : interfaces_.find(vrf)->second) {
        if (!interface.addresses.empty()) {
            find(interface, l2Vnis_);
            find(interface, l3Vnis_);
        }
    }
}

void Collector::addPorts(PortsOfVni const & ports) {
    auto & router = routers_[*ports.vrf];
    auto const vtep = ports.vtep.isZero() ? Nolt::IpGenAddr() : Nolt::IpGenAddr(ports.vtep);
    for (auto const & address : ports.interface->addresses) {
        step();
        if (!isLinkLocal(address.address())) {
            router.ports[address].insert(RouterPort{ports.vni, ports.interface->mac, vtep});
        }
    }
}

void Collector::addRouters(SwitchFacts & own) {
    std::vector<PortsOfVni> ports;
    for (auto const & [name, isDown] : vrfs_) {
        auto const found = interfaces_.find(name);
        if (found == interfaces_.end()) {
            routers_.erase(name);
            fits_ = fits_ && isDown;
            leaveOut(Subject::routers, "VRF \"" + name + "\": no interfaces");
            continue;
        }
        routers_[name];
        findPorts(name, ports);
        own.routers.insert(name);
    }
    for (PortsOfVni const & some : ports) {
        addPorts(some);
    }
}

/// Whether its VRF is in the list of VRFs, and is not down there.
bool Collector::isUp(L3Vni const & vni) const {
    auto const found = vrfs_.find(vni.vrf);
    return found != vrfs_.end() && !found->second;
}

template <class Address>
std::optional<Address> Collector::lowestOfThoseUp(Address L3Vni::*address) const {
    std::optional<Address> lowest;
    for (auto const & [vni, known] : l3Vnis_) {
        auto const & own = known.*address;
        if (isUp(known) && !own.isZero() && (!lowest || own < *lowest)) {
            lowest = own;
        }
    }
    return lowest;
}

void Collector::identify(SwitchFacts & own, VtepSource const & source) {
    own.systemId = source.systemId ? source.systemId : lowestOfThoseUp(&L3Vni::routerMac);
    if (!own.systemId && !own.routers.empty()) {
        findings_.remarks.push_back(
            {Subject::routers,
             "in no map of routers: the fabric file has no system_id for it, and no L3 "
             "VNI that is up has a router MAC"});
    }
    if (auto const vtep = lowestOfThoseUp(&L3Vni::vtep)) {
        own.vteps.insert(*vtep);
    }
}

/// Remarks on unknown states of devices, if they matter.
void Collector::checkDeviceStates() {
    bool const matters = std::any_of(l2Vnis_.begin(), l2Vnis_.end(),
                                     [](auto const & entry) { return entry.second.isIdle; });
    if (matters && !deviceComplaint_.empty()) {
        findings_.remarks.push_back(
            {Subject::localMacs, "whether the VXLAN devices of VNIs without entries are up is not "
                                 "known: " +
                                     deviceComplaint_});
    }
}

Answer Collector::finished(VtepSource const & source) {
    Answer answer;
    checkDeviceStates();
    if (source.expectsEvpn) {
        requireEvpn();
    }
    resolveSegments();
    dropUnknownVnis(local_, Subject::localMacs, Subject::localBindings);
    dropUnknownVnis(remote_, Subject::remoteMacs, Subject::remoteBindings);
    placeLocal(local_);
    addVnis(local_);
    auto & own = answer.facts.switches[source.name];
    addRouters(own);
    identify(own, source);
    answer.facts.local[source.name] = std::move(local_);
    answer.facts.remote = std::move(remote_);
    answer.facts.routers = std::move(routers_);
    std::erase_if(details_.macs, [&](state::MacDetails const & one) {
        step();
        return !l2Vnis_.contains(one.vni);
    });
    answer.facts.details = std::move(details_);
    answer.facts.settle(watch_);
    answer.findings = std::move(findings_);
    answer.fits = fits_;
    return answer;
}

} // namespace vxshow::sources::frr
