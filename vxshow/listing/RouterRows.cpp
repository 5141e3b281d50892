#include "vxshow/listing/RouterRows.h"

#include <array>
#include <string_view>

namespace vxshow::listing {

namespace {

namespace Cli = VxlanController::Cli;

constexpr Column routerColumn{"router", "Name", Type::text};
constexpr Column routerVtepColumn{"vtepIp", "VTEP", Type::ip};
constexpr Column routerSwitchColumn{"switchId", "Switch", Type::text};
constexpr Column portIpColumn{"ipAddress", "IP Address", Type::network};
constexpr Column portVniColumn{"vni", "VNI", Type::vni};
constexpr Column portMacColumn{"mac", "MAC Address", Type::mac};
constexpr Column vlanColumn{"vlan", "Vlan", Type::number};
constexpr Column portColumn{"port", "Port", Type::text};
constexpr Column prefixColumn{"prefix", "Prefix", Type::network};
constexpr Column nexthopColumn{"nexthop", "Nexthop", Type::ip};

constexpr std::array mapColumns{routerColumn, routerVtepColumn, routerSwitchColumn};
constexpr std::array ipPortColumns{routerColumn, portIpColumn, portVniColumn, portMacColumn,
                                   routerVtepColumn};
constexpr std::array uplinkColumns{routerColumn, portIpColumn,  routerSwitchColumn, vlanColumn,
                                   portColumn,   portMacColumn, routerVtepColumn};
constexpr std::array routeColumns{routerColumn, prefixColumn, nexthopColumn};

constexpr std::array mapTables{Table{"map", mapColumns}};
constexpr std::array detailTables{Table{"ports", ipPortColumns}, Table{"uplinks", uplinkColumns}};
constexpr std::array routesTables{Table{"routes", routeColumns}};

void walkIpPorts(Cli::LRDetail const & router, RowSink & sink) {
    std::array<Cell, 5> row{std::string_view(router.lRName())};
    for (VxlanController::LRIpPortV2 const & port : router.ipPort()) {
        row[1] = port.ip();
        row[2] = port.vni();
        row[3] = port.mac();
        row[4] = knownOrNone(port.vtep());
        sink.row(row);
    }
}

void walkUplinkPorts(Cli::LRDetail const & router, RowSink & sink) {
    std::array<Cell, 7> row{std::string_view(router.lRName())};
    for (Cli::LRIpUplinkPortAddress const & uplink : router.ipUplinkPort()) {
        auto const vlan = uplink.vlanId();
        row[1] = uplink.ip();
        row[2] = knownOrNone(std::string_view(uplink.switchId()));
        row[3] = vlan.isNone() ? Cell() : Cell(Vex::U64{vlan.value()});
        row[4] = Unknown();
        row[5] = uplink.mac();
        row[6] = knownOrNone(uplink.vtep());
        for (Vex::String const & port : uplink.port()) {
            row[4] = std::string_view(port);
            sink.row(row);
        }
        if (uplink.port().empty()) {
            sink.row(row);
        }
    }
}

} // namespace

Tables const routerMapTables = mapTables;
Tables const routerDetailTables = detailTables;
Tables const routerRoutesTables = routesTables;

void walk(Cli::VcsLRMap const & command, std::size_t /* table */, RowSink & sink) {
    std::array<Cell, 3> row;
    for (Cli::LRMap const & router : command.lRMap()) {
        row[0] = std::string_view(router.lRName());
        for (Cli::SwitchMap const & member : router.switchList()) {
            row[1] = knownOrNone(member.vtepAddr());
            row[2] = std::string_view(member.switchId());
            sink.row(row);
        }
    }
}

void walk(Cli::VcsLR const & command, std::size_t table, RowSink & sink) {
    for (Cli::LRDetail const & router : command.lRDetail()) {
        if (table == 0) {
            walkIpPorts(router, sink);
        } else {
            walkUplinkPorts(router, sink);
        }
    }
}

void walk(Cli::VcsLRRoute const & command, std::size_t /* table */, RowSink & sink) {
    std::array<Cell, 3> row;
    for (Cli::LRRouteByName const & router : command.lRRouteByName()) {
        row[0] = std::string_view(router.lRName());
        for (Cli::LRRoute const & route : router.lRRoute()) {
            row[1] = route.prefix();
            for (Nolt::IpGenAddr const & nexthop : route.nexthop()) {
                row[2] = knownOrNone(nexthop);
                sink.row(row);
            }
            if (route.nexthop().empty()) {
                row[2] = Unknown();
                sink.row(row);
            }
        }
    }
}

} // namespace vxshow::listing
