#include "tests/unit/VxlanController/router/RouterState.h"

#include "tests/unit/VxlanController/Rendered.h"

#include <gtest/gtest.h>

using namespace VxlanController;
using Nolt::EthAddr;
using Nolt::IpAddr;
using Nolt::IpGenAddr;
using Nolt::IpGenAddrWithMask;
using Nolt::IpGenPrefix;

namespace {

/// The VTEP with that address; if absent, it is created in service.
Vex::Ptr<VtepMap> vtepOf(SwitchInfoDir & directory, char const * ip) {
    auto const address = IpGenAddr::fromString(ip);
    bool const known = directory.vtepMap(address) != nullptr;
    auto const vtep = directory.vtepMapIs(address);
    vtep->activeIs(!known || vtep->active());
    return vtep;
}

/// The header of a listing, taken from the listing of an empty state. Its bytes are checked by
/// the golden tests of each listing.
std::string headerOf(std::string const & emptyListing) {
    return emptyListing.substr(0, emptyListing.find("\nTotal"));
}

/// The part of a details listing that is about uplinks.
std::string uplinkPart(std::string const & details) {
    return details.substr(std::min(details.find("Uplink ports:\n"), details.size()));
}

std::string uplinkHeader() {
    return headerOf(uplinkPart(detailText(RouterState())));
}

/// What follows `header`, with which `text` must start.
std::string afterHeader(std::string const & header, std::string const & text) {
    EXPECT_EQ(text.substr(0, header.size()), header);
    return text.substr(std::min(header.size(), text.size()));
}

} // namespace

RouterState & RouterState::leaf(std::string const & switchId,
                                std::initializer_list<char const *> vteps,
                                std::initializer_list<std::string> routers) {
    auto const info = switchInfoDir->switchInfoIs(switchId);
    for (char const * ip : vteps) {
        auto const address = IpGenAddr::fromString(ip);
        vtepNames(ip, switchId);
        info->vtepMapIs({address, "Vxlan1"}, switchInfoDir->vtepMap(address));
    }
    for (std::string const & router : routers) {
        publishes(switchId.c_str(), routerPath(router));
    }
    return *this;
}

RouterState & RouterState::inactive(char const * vtep) {
    vtepOf(*switchInfoDir, vtep)->activeIs(false);
    return *this;
}

RouterState & RouterState::vtepNames(char const * vtep, std::string const & switchId) {
    vtepOf(*switchInfoDir, vtep)->switchIdIs({switchId, "Vxlan1"});
    return *this;
}

RouterState & RouterState::publishes(char const * systemId, std::string const & path,
                                     std::string const & kind) {
    Controller::SystemId const id(EthAddr::fromString(systemId));
    publishStatus->systemIs(id)->publishedMountIs(Controller::MountDesc(path, kind));
    return *this;
}

RouterState & RouterState::router(std::string const & name) {
    status(name);
    return *this;
}

RouterState & RouterState::port(std::string const & router, char const * ip, Vex::U32 vni,
                                char const * mac, char const * vtep) {
    status(router).ipPortIs(LRIpPortV2(IpGenAddrWithMask::fromString(ip), Vxlan::Vni(vni),
                                       EthAddr::fromString(mac), IpGenAddr::fromString(vtep)));
    return *this;
}

RouterState & RouterState::uplink(std::string const & router, char const * ip,
                                  std::initializer_list<PortVlan> ports, char const * mac,
                                  char const * vtep) {
    LRIpUplinkPortV2 uplink(IpGenAddrWithMask::fromString(ip), EthAddr::fromString(mac),
                            IpGenAddr::fromString(vtep));
    for (PortVlan const & pair : ports) {
        uplink.portVlanIs({pair.port, Bridging::VlanIdOrNone(pair.vlan)});
    }
    status(router).ipUplinkPortIs(std::move(uplink));
    return *this;
}

RouterState & RouterState::route(std::string const & router, char const * prefix,
                                 std::initializer_list<char const *> nexthops) {
    LRRouteV2 route(IpGenPrefix::fromString(prefix));
    for (char const * nexthop : nexthops) {
        route.nexthopIs(IpGenAddr::fromString(nexthop));
    }
    status(router).routeIs(std::move(route));
    return *this;
}

LRStatusV2 & RouterState::status(std::string const & entry, std::string const & name) {
    if (!lRStatusDir->entityPtr(entry)) {
        lRStatusDir->entityIs(entry, Vex::makePtr<LRStatusV2>(name.empty() ? entry : name));
    }
    // The directory returns its entities as const, but the test that owns them can write to them.
    return const_cast<LRStatusV2 &>(
        dynamic_cast<LRStatusV2 const &>(*lRStatusDir->entityPtr(entry)));
}

std::string routerPath(std::string const & router) {
    return "vxlancontroller/version2/logicalRouter/" + router;
}

RouterState manyRouters(Vex::U32 count) {
    RouterState state;
    for (Vex::U32 i = 0; i < count; ++i) {
        auto const last = [i](Vex::U32 shift) { return static_cast<Vex::U8>(i >> shift); };
        std::string const name = "router" + std::to_string(i);
        std::string const id = EthAddr({2, 0, 0, last(16), last(8), last(0)}).stringValue();
        std::string const vtep = IpAddr(0x0A000000 + i).stringValue();
        state.leaf(id, {vtep.c_str()}, {name})
            .port(name, "10.0.0.1/24", 10)
            .uplink(name, "10.1.0.1/24", {{"Ethernet1", 1}})
            .route(name, "10.2.0.0/16", {"10.0.0.2"});
    }
    return state;
}

Vex::Ptr<Cli::VcsLRMap> mapCommand(RouterState const & state, RouterFilters const & filters) {
    auto const vteps = Cli::vtepListFactory();
    for (char const * vtep : filters.vteps) {
        vteps->vtepIs(IpAddr::fromString(vtep), true);
    }
    return Cli::vcsLRMapFactory(state.publishStatus, state.switchInfoDir, filters.router,
                                filters.switchId, vteps);
}

Vex::Ptr<Cli::VcsLR> detailCommand(RouterState const & state, RouterFilters const & filters) {
    return Cli::vcsLRFactory(state.publishStatus, state.switchInfoDir, state.lRStatusDir,
                             filters.dotted, filters.router);
}

Vex::Ptr<Cli::VcsLRRoute> routesCommand(RouterState const & state, RouterFilters const & filters) {
    return Cli::vcsLRRouteFactory(state.lRStatusDir, filters.router,
                                  IpGenPrefix::fromString(filters.prefix));
}

std::string mapText(RouterState const & state, RouterFilters const & filters) {
    return rendered(mapCommand(state, filters));
}

std::string mapJson(RouterState const & state, RouterFilters const & filters) {
    return rendered(mapCommand(state, filters), jsonFormat);
}

std::string detailText(RouterState const & state, RouterFilters const & filters) {
    return rendered(detailCommand(state, filters));
}

std::string detailJson(RouterState const & state, RouterFilters const & filters) {
    return rendered(detailCommand(state, filters), jsonFormat);
}

std::string routesText(RouterState const & state, RouterFilters const & filters) {
    return rendered(routesCommand(state, filters));
}

std::string routesJson(RouterState const & state, RouterFilters const & filters) {
    return rendered(routesCommand(state, filters), jsonFormat);
}

std::string mapBody(RouterState const & state, RouterFilters const & filters) {
    return mapBodyOf(mapText(state, filters));
}

std::string portBody(RouterState const & state, RouterFilters const & filters) {
    std::string const body =
        afterHeader(headerOf(detailText(RouterState())), detailText(state, filters));
    return body.substr(0, body.find(uplinkHeader()));
}

std::string uplinkBody(RouterState const & state, RouterFilters const & filters) {
    return afterHeader(uplinkHeader(), uplinkPart(detailText(state, filters)));
}

std::string routesBody(RouterState const & state, RouterFilters const & filters) {
    return routesBodyOf(routesText(state, filters));
}

std::string mapBodyOf(std::string const & text) {
    return afterHeader(headerOf(mapText(RouterState())), text);
}

std::string routesBodyOf(std::string const & text) {
    return afterHeader(headerOf(routesText(RouterState())), text);
}
