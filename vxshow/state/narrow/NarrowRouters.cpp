#include "vxshow/state/narrow/NarrowRouters.h"

#include "state/LRStatusV2.h"
#include "vxshow/state/narrow/Prefixes.h"

#include <string_view>

namespace vxshow::state::narrow {

namespace {

using VxlanController::LRRouteV2;
using VxlanController::LRStatusV2;

/// The addresses of a prefix.
Intervals<Nolt::IpGenAddr>::Interval addressesOf(Nolt::IpGenPrefix const & prefix) {
    return {prefix.address(), lastAddress(prefix)};
}

} // namespace

Vex::Ptr<Vex::Dir> narrowedRouterStatus(Vex::Ptr<Vex::Dir> const & status,
                                        NamePatterns const & names) {
    if (!status || names.empty()) {
        return status;
    }
    auto result = Vex::makePtr<Vex::Dir>();
    for (auto at = status->entityPtrIteratorConst(); at; ++at) {
        auto const router = Vex::dynamicPtr<LRStatusV2 const>(at.entity());
        if (router && names.contains(router->name())) {
            result->entityIs(at.name(), router);
        }
    }
    return result;
}

Vex::Ptr<Vex::Dir> narrowedRoutes(Vex::Ptr<Vex::Dir> const & status,
                                  Intervals<Nolt::IpGenAddr> const & prefixes) {
    if (!status) {
        return nullptr;
    }
    auto result = Vex::makePtr<Vex::Dir>();
    for (auto at = status->entityPtrIteratorConst(); at; ++at) {
        auto const router = Vex::dynamicPtr<LRStatusV2 const>(at.entity());
        if (!router) {
            continue;
        }
        auto kept = Vex::makePtr<LRStatusV2>(router->name());
        for (LRRouteV2 const & route : router->route()) {
            if (prefixes.intersects(addressesOf(route.prefix()))) {
                kept->routeIs(route);
            }
        }
        result->entityIs(at.name(), kept);
    }
    return result;
}

Vex::Ptr<Statestore::PublishStatus>
narrowedPublished(Vex::Ptr<Statestore::PublishStatus> const & published,
                  NamePatterns const & names) {
    if (!published || names.empty()) {
        return published;
    }
    auto const prefix = VxlanController::Cli::LRMapBase::pathPrefix();
    auto result = Vex::makePtr<Statestore::PublishStatus>();
    for (auto const & system : published->system()) {
        auto const kept = result->systemIs(system.systemId());
        for (Controller::MountDesc const & mount : system.publishedMount()) {
            std::string_view const path = mount.path();
            if (path.starts_with(prefix) && names.contains(path.substr(prefix.size()))) {
                kept->publishedMountIs(mount);
            }
        }
    }
    return result;
}

Vex::Ptr<VxlanController::SwitchInfoDir>
narrowedSwitchInfo(Vex::Ptr<VxlanController::SwitchInfoDir> const & switches,
                   std::set<std::string> const & identifiers) {
    if (!switches) {
        return nullptr;
    }
    auto result = Vex::makePtr<VxlanController::SwitchInfoDir>();
    for (auto at = switches->vtepMap().begin(); at; ++at) {
        auto const & vtep = *at.slot().element();
        auto const copy = result->vtepMapIs(vtep.address());
        copy->activeIs(vtep.active());
        for (auto const & key : vtep.switchId()) {
            copy->switchIdIs(key);
        }
    }
    for (std::string const & identifier : identifiers) {
        auto const info = switches->switchInfo(Vex::String(identifier));
        if (!info) {
            continue;
        }
        auto const copy = result->switchInfoIs(info->switchId());
        for (auto at = info->vtepMap().begin(); at; ++at) {
            copy->vtepMapIs(at.key(), at.slot().element());
        }
    }
    return result;
}

} // namespace vxshow::state::narrow
