#include "state/LRStatusV2.h"

#include <utility>

namespace [[gnu::visibility("default")]] VxlanController {

bool LRStatusV2::routeIs(LRRouteV2 route) {
    return route_.upsert(Routes::Slot(std::move(route)));
}

bool LRStatusV2::ipPortIs(LRIpPortV2 const & port) {
    return ipPort_.upsert(IpPorts::Slot(port));
}

bool LRStatusV2::ipUplinkPortIs(LRIpUplinkPortV2 port) {
    return ipUplinkPort_.upsert(IpUplinkPorts::Slot(std::move(port)));
}

} // namespace VxlanController
