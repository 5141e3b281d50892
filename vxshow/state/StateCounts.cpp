#include "vxshow/state/StateCounts.h"

#include "state/LRStatusV2.h"
#include "state/VniFdbStatusV2.h"
#include "state/VniStatusDirV2.h"

#include <set>

namespace vxshow::state {

namespace {

namespace Cli = VxlanController::Cli;

void add(TableCounts & counts, VxlanController::VniTables const & tables) {
    ++counts.vnis;
    counts.macs += tables.macVtepTable().size();
    counts.multipath += tables.macVtepMultiPathTable().size();
    counts.bindings += tables.arpTable().size();
    for (auto const & list : tables.macVtepFloodListTable()) {
        counts.floods += list.vtepIp().size();
    }
}

void add(TableCounts & counts, VxlanController::VniStatusDirV2 const & source) {
    ++counts.sources;
    for (auto const & status : source.vniStatusV2()) {
        add(counts, status);
    }
}

template <class Entity>
TableCounts countsOf(std::string_view side, Vex::Dir const & dir) {
    TableCounts counts{side, "switches"};
    for (auto at = dir.entityPtrIteratorConst(); at; ++at) {
        if (auto const entity = Vex::dynamicPtr<Entity const>(at.entity())) {
            add(counts, *entity);
        }
    }
    return counts;
}

void addSources(std::vector<TableCounts> & all, std::string_view side,
                Vex::Ptr<Cli::VniStatusDirList> const & list) {
    for (std::string_view const name : {hscName, qvxName}) {
        auto const source = list ? list->vniStatusDir(Vex::Name(name)) : nullptr;
        if (source) {
            add(all.emplace_back(TableCounts{side, name}), *source);
        }
    }
}

void addEvpn(std::vector<TableCounts> & all, std::string_view side,
             Vex::Ptr<Cli::HostFloodTableList> const & list) {
    auto const tables = list ? list->hostFloodTable(Vex::Name(evpnName)) : nullptr;
    if (!tables) {
        return;
    }
    auto & counts = all.emplace_back(TableCounts{side, evpnName, 1});
    std::set<Vxlan::Vni> vnis;
    if (auto const & hosts = tables->hostTable()) {
        for (auto at = hosts->begin(); at; ++at) {
            if (at.value() != VcsEvpn::Host()) {
                vnis.insert(at.key().vni);
                ++counts.macs;
            }
        }
    }
    if (auto const & floods = tables->floodTable()) {
        for (auto at = floods->begin(); at; ++at) {
            if (at.value() != VcsEvpn::FloodEntry()) {
                vnis.insert(at.key().vni);
                ++counts.floods;
            }
        }
    }
    counts.vnis = vnis.size();
}

void addRouters(StateCounts & counts, Mount::Routers const & routers) {
    if (routers.switchInfoDir) {
        counts.routerSwitches = routers.switchInfoDir->switchInfo().size();
    }
    if (!routers.lRStatusDir) {
        return;
    }
    for (auto at = routers.lRStatusDir->entityPtrIteratorConst(); at; ++at) {
        if (auto const router = Vex::dynamicPtr<VxlanController::LRStatusV2 const>(at.entity())) {
            ++counts.routers;
            counts.ports += router->ipPort().size();
            counts.routes += router->route().size();
        }
    }
}

} // namespace

StateCounts countsOf(Mount const & mount) {
    constexpr std::string_view received = "received";
    constexpr std::string_view advertised = "advertised";
    StateCounts counts;
    auto & tables = counts.tables;
    if (mount.received.switches) {
        tables.push_back(
            countsOf<VxlanController::VniStatusDirV2>(received, *mount.received.switches));
    }
    addSources(tables, received, mount.received.sources);
    addEvpn(tables, received, mount.received.evpn);
    if (mount.advertised.vnis) {
        tables.push_back(
            countsOf<VxlanController::VniFdbStatusV2>(advertised, *mount.advertised.vnis));
    }
    addSources(tables, advertised, mount.advertised.sources);
    addEvpn(tables, advertised, mount.advertised.evpn);
    addRouters(counts, mount.routers);
    return counts;
}

} // namespace vxshow::state
