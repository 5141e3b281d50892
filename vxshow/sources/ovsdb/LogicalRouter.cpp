#include "vxshow/sources/ovsdb/LogicalRouter.h"

#include "vxshow/sources/RoutePrefix.h"
#include "vxshow/sources/ovsdb/Content.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/Quoting.h"

namespace vxshow::sources::ovsdb {

void LogicalRouter::port(std::string const & address, Rows::LogicalSwitch const & in) {
    constexpr std::string_view column = "switch_binding";
    auto const ip = Nolt::IpGenAddrWithMask::tryFromString(address);
    if (!ip || ip->isNone()) {
        return leaveOut(column, text::shownInQuotes(address),
                        "an address with its prefix length such as 10.1.2.3/24");
    }
    if (auto const vni = in.vni()) {
        router_.ports[*ip].insert(RouterPort{*vni});
        return;
    }
    auto const key =
        in.key ? " with tunnel_key " + std::to_string(*in.key) : " without a tunnel_key";
    leaveOut(column, text::shownInQuotes(address) + " to " + text::shownInQuotes(in.name) + key,
             aKey);
}

void LogicalRouter::route(std::string const & prefix, std::string const & nexthop) {
    constexpr std::string_view column = "static_routes";
    auto const to = readRoutePrefix(prefix);
    if (!to) {
        return leaveOut(column, text::shownInQuotes(prefix), "a prefix such as 10.1.0.0/16");
    }
    auto const by = someIp(nexthop);
    if (!by) {
        return leaveOut(column, text::shownInQuotes(prefix) + " to " + text::shownInQuotes(nexthop),
                        text::anIpAddress);
    }
    router_.routes[*to].insert(*by);
}

void LogicalRouter::leaveOut(std::string_view column, std::string const & found,
                             std::string_view expected) {
    auto what = "Logical_Router " + text::shownInQuotes(name_) + ": ";
    what.append(column).append(" ").append(found);
    leftOut_.add(Subject::routers, what.append(", expected ").append(expected));
}

} // namespace vxshow::sources::ovsdb
