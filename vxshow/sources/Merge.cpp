#include "vxshow/sources/Merge.h"

#include "state/FloodTable.h"
#include "state/HostTable.h"
#include "state/VniFdbStatusV2.h"
#include "state/VniStatusDirV2.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vxshow::sources {

namespace {

namespace Cli = VxlanController::Cli;

using VxlanController::ArpEntryV2;
using VxlanController::MacVtepFloodListV2;
using VxlanController::MacVtepMultiPathV2;
using VxlanController::MacVtepV2;
using VxlanController::VniTables;

/// A part of a settled list.
template <class Fact>
struct Run {
    using At = typename std::vector<Fact>::const_iterator;

    At first;
    At last;

    At begin() const { return first; }

    At end() const { return last; }

    std::size_t size() const { return static_cast<std::size_t>(last - first); }
};

/// The facts of a settled list, VNI by VNI. To be asked for VNIs in ascending order.
template <class Fact>
class ByVni {
public:
    explicit ByVni(std::vector<Fact> const & facts) : at_(facts.begin()), end_(facts.end()) {}

    Run<Fact> of(Vxlan::Vni vni) {
        at_ = std::find_if(at_, end_, [&](Fact const & fact) { return fact.vni >= vni; });
        auto const first = at_;
        at_ = std::find_if(at_, end_, [&](Fact const & fact) { return fact.vni != vni; });
        return {first, at_};
    }

private:
    typename Run<Fact>::At at_;
    typename Run<Fact>::At end_;
};

/// Calls `take` for each part of `run` in which `key` is the same.
template <class Fact, class Key, class Take>
void eachPart(Run<Fact> run, Key Fact::*key, Take && take) {
    while (run.first != run.last) {
        auto const next = std::find_if(
            run.first, run.last, [&](Fact const & fact) { return fact.*key != (*run.first).*key; });
        take(Run<Fact>{run.first, next});
        run.first = next;
    }
}

/// Makes the tables of one VNI after the other, in vectors that are reused.
class TablesMaker {
public:
    TablesMaker(SideFacts const & side, state::Selection const & selection, DeadlineWatch & watch)
        : selection_(selection), watch_(watch), macs_(side.macs), floods_(side.floods),
          bindings_(side.bindings) {}

    /// Fills `into`, which is empty. To be asked for VNIs in ascending order. Throws `TimedOut`.
    void fill(Vxlan::Vni vni, VniTables & into) {
        watch_.step();
        if (selection_.macTables) {
            fillMacs(macs_.of(vni), into);
            fillFloods(floods_.of(vni), into);
        }
        if (selection_.arpTables) {
            fillBindings(bindings_.of(vni), into);
        }
    }

private:
    void fillMacs(Run<MacPlace> places, VniTables & into) {
        unicast_.reserve(places.size());
        eachPart(places, &MacPlace::mac, [&](Run<MacPlace> const & one) {
            auto const & place = *one.first;
            watch_.step();
            if (one.size() == 1) {
                unicast_.emplace_back(MacVtepV2(place.mac, place.vtep, place.moves));
                return;
            }
            MacVtepMultiPathV2 entry(place.mac);
            for (MacPlace const & path : one) {
                watch_.step();
                entry.vtepIpIs(path.vtep, true);
            }
            multipath_.emplace_back(std::move(entry));
        });
        into.macVtepTableIs(unicast_);
        into.macVtepMultiPathTableIs(multipath_);
    }

    void fillFloods(Run<FloodTarget> targets, VniTables & into) {
        eachPart(targets, &FloodTarget::mac, [&](Run<FloodTarget> const & list) {
            auto entry = Vex::makePtr<MacVtepFloodListV2>(list.first->mac);
            for (FloodTarget const & target : list) {
                watch_.step();
                entry->vtepIpIs(target.vtep, true);
            }
            flood_.emplace_back(std::move(entry));
        });
        into.macVtepFloodListTableIs(flood_);
    }

    void fillBindings(Run<IpBinding> bindings, VniTables & into) {
        eachPart(bindings, &IpBinding::ip, [&](Run<IpBinding> const & claims) {
            watch_.step();
            auto const & best = *claims.first;
            arp_.emplace_back(ArpEntryV2(best.ip, best.mac, best.preference, best.changes));
        });
        into.arpTableIs(arp_);
    }

    state::Selection const & selection_;
    DeadlineWatch & watch_;
    ByVni<MacPlace> macs_;
    ByVni<FloodTarget> floods_;
    ByVni<IpBinding> bindings_;
    std::vector<VniTables::MacVtepTable::Slot> unicast_;
    std::vector<VniTables::MacVtepMultiPathTable::Slot> multipath_;
    std::vector<VniTables::MacVtepFloodListTable::Slot> flood_;
    std::vector<VniTables::ArpTable::Slot> arp_;
};

/// Fills the directory of one switch or source.
void fillStatusDir(SideFacts const & side, state::Selection const & selection,
                   VxlanController::VniStatusDirV2 & dir, DeadlineWatch & watch) {
    TablesMaker tables(side, selection, watch);
    for (Vxlan::Vni const vni : side.vnis) {
        if (selection.vni.matches(vni)) {
            tables.fill(vni, *dir.vniStatusV2Is(vni));
        }
    }
}

Vex::Ptr<VcsEvpn::HostTable const> hostTable(SideFacts const & side, DeadlineWatch & watch) {
    auto hosts = VcsEvpn::HostTableWriter::inOwnMemory("EVPN hosts", side.macs.size());
    for (auto at = side.macs.begin(); at != side.macs.end();) {
        auto best = at;
        auto const first = *at;
        for (; at != side.macs.end() && at->vni == first.vni && at->mac == first.mac; ++at) {
            watch.step();
            best = at->moves > best->moves ? at : best;
        }
        hosts.insert({first.mac, first.vni}, VcsEvpn::Host(best->vtep, best->moves));
    }
    return hosts.table();
}

Vex::Ptr<VcsEvpn::FloodTable const> floodTable(SideFacts const & side, DeadlineWatch & watch) {
    auto flood = VcsEvpn::FloodTableWriter::inOwnMemory("EVPN flood lists");
    VcsEvpn::FloodEntry const replicated(VcsEvpn::FloodEntry::TunnelType::ingressReplication);
    for (FloodTarget const & target : side.floods) {
        watch.step();
        if (target.mac.isZero()) {
            flood.insert({target.vni, target.vtep}, replicated);
        }
    }
    return flood.table();
}

Vex::Ptr<Cli::HostFloodTableList> evpnTables(SideFacts const & side, DeadlineWatch & watch) {
    auto tables = Cli::hostFloodTableFactory();
    tables->hostTableIs(hostTable(side, watch));
    tables->floodTableIs(floodTable(side, watch));
    auto list = Cli::hostFloodTableListFactory();
    list->hostFloodTableIs(state::evpnName, tables);
    return list;
}

} // namespace

void Merge::add(Facts const & facts, Role role) {
    any_ = true;
    addRouters(facts);
    if (role == Role::switches) {
        if (!switches_) {
            switches_.emplace();
        }
        for (auto const & [name, side] : facts.local) {
            (*switches_)[name].add(side);
        }
        advertised_.add(facts.remote);
        return;
    }
    auto & sides = sidesOf(role);
    if (!sides) {
        sides.emplace();
    }
    sides->received.add(facts.remote);
    for (auto const & [name, side] : facts.local) {
        sides->advertised.add(side);
    }
}

std::optional<Merge::Sides> & Merge::sidesOf(Role role) {
    if (role == Role::evpn) {
        return evpn_;
    }
    return role == Role::hsc ? hsc_ : qvx_;
}

void Merge::addRouters(Facts const & facts) {
    switchInfo_.insert(switchInfo_.end(), facts.switches.begin(), facts.switches.end());
    for (auto const & [name, router] : facts.routers) {
        auto & all = routers_[name];
        watch_.step();
        for (auto const & [ip, ports] : router.ports) {
            watch_.step();
            all.ports[ip].insert(ports.begin(), ports.end());
        }
        for (auto const & [prefix, nexthops] : router.routes) {
            watch_.step();
            all.routes[prefix].insert(nexthops.begin(), nexthops.end());
        }
    }
}

/// Empty if it is not `selected`.
Vex::Ptr<VxlanController::VniStatusDirV2> Merge::statusDir(Gathered & side, bool selected) {
    auto dir = Vex::makePtr<VxlanController::VniStatusDirV2>();
    if (selected) {
        fillStatusDir(side.facts(watch_), selection_, *dir, watch_);
    }
    return dir;
}

void Merge::mountSwitches(state::Mount & mount) {
    mount.received.switches = Vex::makePtr<Vex::Dir>();
    for (auto & [name, side] : *switches_) {
        bool const selected = selection_.received && selection_.takesSwitch(name);
        mount.received.switches->entityIs(Vex::Name(name), statusDir(side, selected));
    }
    mount.advertised.vnis = Vex::makePtr<Vex::Dir>();
    if (!selection_.advertised) {
        return;
    }
    auto const & facts = advertised_.facts(watch_);
    TablesMaker tables(facts, selection_, watch_);
    for (Vxlan::Vni const vni : facts.vnis) {
        if (selection_.vni.matches(vni)) {
            auto entry = Vex::makePtr<VxlanController::VniFdbStatusV2>();
            tables.fill(vni, *entry);
            mount.advertised.vnis->entityIs(Vex::Name(vni.stringValue()), entry);
        }
    }
}

void Merge::mountSources(state::Mount & mount) {
    mount.received.sources = Cli::vniStatusDirListFactory();
    auto & received = *mount.received.sources;
    if (qvx_) {
        received.vniStatusDirIs(state::qvxName, statusDir(qvx_->received, selection_.received));
    }
    if (hsc_) {
        received.vniStatusDirIs(state::hscName, statusDir(hsc_->received, selection_.received));
        mount.advertised.sources = Cli::vniStatusDirListFactory();
        mount.advertised.sources->vniStatusDirIs(
            state::hscName, statusDir(hsc_->advertised, selection_.advertised));
    }
}

void Merge::mountEvpn(state::Mount & mount) {
    mount.received.evpn = evpnTables(evpn_->received.facts(watch_), watch_);
    mount.advertised.evpn = evpnTables(evpn_->advertised.facts(watch_), watch_);
}

state::Mount Merge::mount() {
    state::Mount mount;
    if (switches_) {
        mountSwitches(mount);
    }
    if (hsc_ || qvx_) {
        mountSources(mount);
    }
    if (evpn_) {
        mountEvpn(mount);
    }
    if (any_) {
        mount.routers = mountRouters(switchInfo_, routers_, watch_);
    }
    return mount;
}

} // namespace vxshow::sources
