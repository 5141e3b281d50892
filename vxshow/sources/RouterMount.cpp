#include "vxshow/sources/RouterMount.h"

#include "state/LRStatusV2.h"

namespace vxshow::sources {

namespace {

using VxlanController::LRIpPortV2;
using VxlanController::LRRouteV2;
using VxlanController::LRStatusV2;

constexpr char const * kind = "Vxlan";
constexpr char const * routerPath = "vxlancontroller/version2/logicalRouter/";
constexpr char const * vniPath = "vxlancontroller/version2/vniStatus";

// No source reports the VXLAN interface, which is the other half of both keys.
Vex::String const noInterface;

Vex::String identifierOf(NamedSwitch const & named) {
    auto const & [name, known] = named;
    return known.systemId ? known.systemId->stringValue() : Vex::String(name);
}

void mountVteps(NamedSwitch const & named, VxlanController::SwitchInfoDir & dir,
                DeadlineWatch & watch) {
    auto const id = identifierOf(named);
    auto const info = dir.switchInfoIs(id);
    for (auto const & address : named.second.vteps) {
        watch.step();
        auto const vtep = dir.vtepMapIs(address);
        vtep->activeIs(true);
        vtep->switchIdIs({id, noInterface});
        info->vtepMapIs({address, noInterface}, vtep);
    }
}

void mountPublished(SwitchFacts const & known, Statestore::PublishStatus & status,
                    DeadlineWatch & watch) {
    if (!known.systemId) {
        return;
    }
    auto const system = status.systemIs(Controller::SystemId(*known.systemId));
    system->publishedMountIs({Vex::String(vniPath), Vex::String(kind)});
    for (auto const & router : known.routers) {
        watch.step();
        system->publishedMountIs({Vex::String(routerPath + router), Vex::String(kind)});
    }
}

Vex::Ptr<LRStatusV2> routerStatus(std::string const & name, RouterFacts const & router,
                                  DeadlineWatch & watch) {
    auto status = Vex::makePtr<LRStatusV2>(Vex::String(name));
    for (auto const & [ip, ports] : router.ports) {
        watch.step();
        auto const & port = *ports.begin();
        status->ipPortIs(LRIpPortV2(ip, port.vni, port.mac, port.vtep));
    }
    for (auto const & [prefix, nexthops] : router.routes) {
        watch.step();
        LRRouteV2 route(prefix);
        for (auto const & nexthop : nexthops) {
            watch.step();
            route.nexthopIs(nexthop);
        }
        status->routeIs(std::move(route));
    }
    return status;
}

} // namespace

state::Mount::Routers mountRouters(std::vector<NamedSwitch> const & switches,
                                   std::map<std::string, RouterFacts> const & routers,
                                   DeadlineWatch & watch) {
    auto const dir = Vex::makePtr<VxlanController::SwitchInfoDir>();
    auto const published = Vex::makePtr<Statestore::PublishStatus>();
    auto const status = Vex::makePtr<Vex::Dir>();
    std::multimap<std::string, std::string> names;
    for (NamedSwitch const & named : switches) {
        watch.step();
        if (named.second.systemId) {
            names.emplace(named.first, identifierOf(named));
        }
        mountVteps(named, *dir, watch);
        mountPublished(named.second, *published, watch);
    }
    for (auto const & [name, router] : routers) {
        watch.step();
        status->entityIs(Vex::Name(name), routerStatus(name, router, watch));
    }
    return {dir, published, status, std::move(names)};
}

} // namespace vxshow::sources
