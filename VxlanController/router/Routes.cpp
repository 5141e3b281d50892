#include "VxlanController/command/CliTrace.h"
#include "VxlanController/command/ForEachEntity.h"
#include "VxlanController/command/ForEachSorted.h"
#include "VxlanController/command/RenderFrame.h"
#include "VxlanController/router/RoutesOutput.h"
#include "state/LRStatusV2.h"

/// The command that shows the routes of logical routers.
namespace VxlanController::Cli {

namespace {

/// True if the filter and the route overlap, whichever is the longer prefix: an operator who
/// asks for 10.1.2.0/24 sees the routes within it, and also those that carry its traffic, such
/// as 10.0.0.0/8.
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
    lRRouteByNameDelAll();
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

void VcsLRRoute::render(U32 fd, U32 format, U32 /* all revisions print the same */) {
    if (auto record = cliTrace().at(traceFunctionEntry)) {
        record << "void VxlanController::Cli::VcsLRRoute::render(U32, U32, U32)";
    }
    auto const print = [&](outfmt::Printer & printer) { renderRoute(printer, this); };
    renderFrame(
        fd, format, [&] { initialize(); }, print, print);
}

} // namespace VxlanController::Cli
