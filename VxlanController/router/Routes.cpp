#include "VxlanController/command/CliTrace.h"
#include "VxlanController/command/ForEachEntity.h"
#include "VxlanController/command/ForEachSorted.h"
#include "VxlanController/command/RenderFrame.h"
#include "VxlanController/router/RoutesOutput.h"
#include "state/LRStatusV2.h"

/// The command that shows the routes of logical routers.
namespace VxlanController::Cli {

namespace {

/// The filter takes what overlaps it, in both directions: asked for 10.1.2.0/24, an operator
/// sees what lies within it and also the routes that carry its traffic, 10.0.0.0/8 for one.
bool prefixFiltered(Nolt::IpGenPrefix const & filter, LRRouteV2 const & route) {
    return filter.isNone() || filter.overlaps(route.prefix());
}

void copyRoutes(LRStatusV2 const & status, Nolt::IpGenPrefix const & filter, VcsLRRoute & into) {
    InterruptPoll poll;
    Vex::Ptr<LRRouteByName> router;
    forEachSorted(
        status.route(), &LRRouteV2::prefix, poll,
        [&](LRRouteV2 const & route) { return prefixFiltered(filter, route); },
        [&](LRRouteV2 const & route) {
            if (!router) {
                router = into.lRRouteByNameIs(status.name());
            }
            auto const copy = router->lRRouteIs(route.prefix());
            for (Nolt::IpGenAddr const & address : route.nexthop()) {
                poll.step();
                copy->nexthopIs(address, true);
            }
        });
}

} // namespace

void VcsLRRoute::initialize() {
    if (!lRStatusDir()) {
        return;
    }
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::VcsLRRoute::initialize()";
    }
    forEachEntity<LRStatusV2>(lRStatusDir(),
                              [&](Vex::Name const & /* entry */, LRStatusV2 const & status) {
                                  if (lRNameFilter().empty() || lRNameFilter() == status.name()) {
                                      copyRoutes(status, prefixFilter(), *this);
                                  }
                              });
}

void VcsLRRoute::render(U32 fd, U32 format, U32 /* every revision reads the same */) {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::VcsLRRoute::render(U32, U32, U32)";
    }
    auto const print = [&](outfmt::Printer & printer) { renderRoute(printer, this); };
    renderFrame(
        fd, format, [&] { initialize(); }, print, print);
}

} // namespace VxlanController::Cli
