#include "vxshow/state/snapshot/RouterStatusWriter.h"

#include "vxshow/state/snapshot/SortedByKey.h"

namespace vxshow::state::snapshot {

namespace {

using VxlanController::LRIpPortV2;
using VxlanController::LRIpUplinkPortV2;
using VxlanController::LRRouteV2;
using VxlanController::LRStatusV2;
using VxlanController::PortVlanPairV2;

void writeVtep(ValuesWriter & values, Nolt::IpGenAddr const & vtep) {
    if (!vtep.isNone()) {
        values.text("vtep", Spelled(vtep));
    }
}

void writePort(ValuesWriter & values, LRIpPortV2 const & port) {
    values.object(Spelled(port.ip()), [&] {
        values.number("vni", port.vni().value());
        values.text("mac", Spelled(port.mac()));
        writeVtep(values, port.vtep());
    });
}

void writePortVlan(ValuesWriter & values, PortVlanPairV2 const & pair) {
    auto & printer = values.printer();
    printer.startListEntry();
    values.text("port", pair.port);
    if (pair.vlan.value() != 0) {
        values.number("vlan", pair.vlan.value());
    }
    printer.endListEntry();
}

void writeUplink(ValuesWriter & values, LRIpUplinkPortV2 const & uplink) {
    values.object(Spelled(uplink.ip()), [&] {
        values.text("mac", Spelled(uplink.mac()));
        writeVtep(values, uplink.vtep());
        if (!uplink.portVlan().empty()) {
            values.list("ports", [&] {
                forEachByKey(uplink.portVlan(), std::identity(),
                             [&](PortVlanPairV2 const & pair) { writePortVlan(values, pair); });
            });
        }
    });
}

} // namespace

void writeRouterStatus(ValuesWriter & values, LRStatusV2 const & status) {
    if (!status.ipPort().empty()) {
        values.object("ports", [&] {
            forEachByKey(status.ipPort(), &LRIpPortV2::ip,
                         [&](LRIpPortV2 const & port) { writePort(values, port); });
        });
    }
    if (!status.ipUplinkPort().empty()) {
        values.object("uplinks", [&] {
            forEachByKey(status.ipUplinkPort(), &LRIpUplinkPortV2::ip,
                         [&](LRIpUplinkPortV2 const & uplink) { writeUplink(values, uplink); });
        });
    }
    if (!status.route().empty()) {
        values.object("routes", [&] {
            forEachByKey(status.route(), &LRRouteV2::prefix, [&](LRRouteV2 const & route) {
                values.addresses(Spelled(route.prefix()), route.nexthop());
            });
        });
    }
}

} // namespace vxshow::state::snapshot
