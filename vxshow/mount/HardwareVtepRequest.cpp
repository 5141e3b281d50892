#include "vxshow/mount/HardwareVtepRequest.h"

#include <array>

namespace vxshow {

namespace {

struct Select {
    HardwareVtepTable table;
    std::string_view name;
    std::string_view columns;
};

using enum HardwareVtepTable;

constexpr std::string_view mcastColumns = R"("MAC","logical_switch","locator_set","ipaddr")";
constexpr std::string_view ucastColumns = R"("MAC","logical_switch","locator","ipaddr")";

/// In this order: what a row refers to stands before it, so that an answer is joined while it
/// is read. The one exception are the ports of a switch.
constexpr std::array<Select, 12> selects{{
    {logicalSwitch, "Logical_Switch", R"("_uuid","name","tunnel_key")"},
    {physicalLocator, "Physical_Locator", R"("_uuid","dst_ip","tunnel_key")"},
    {physicalLocatorSet, "Physical_Locator_Set", R"("_uuid","locators")"},
    {physicalSwitch, "Physical_Switch", R"("name","tunnel_ips","ports")"},
    {physicalPort, "Physical_Port", R"("_uuid","name","vlan_bindings")"},
    {logicalRouter, "Logical_Router", R"("name","switch_binding","static_routes")"},
    {arpSourcesLocal, "Arp_Sources_Local", R"("src_mac","locator")"},
    {arpSourcesRemote, "Arp_Sources_Remote", R"("src_mac","locator")"},
    {mcastMacsLocal, "Mcast_Macs_Local", mcastColumns},
    {mcastMacsRemote, "Mcast_Macs_Remote", mcastColumns},
    {ucastMacsLocal, "Ucast_Macs_Local", ucastColumns},
    {ucastMacsRemote, "Ucast_Macs_Remote", ucastColumns},
}};

Select const & selectOf(HardwareVtepTable table) {
    return selects[static_cast<std::size_t>(table)];
}

bool isMacTable(HardwareVtepTable table) {
    return table >= mcastMacsLocal;
}

std::string textOf(ovsdb::Uuid const & uuid) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (unsigned index = 0; index < 32; ++index) {
        if (index == 8 || index == 12 || index == 16 || index == 20) {
            text.push_back('-');
        }
        auto const half = index < 16 ? uuid.high : uuid.low;
        text.push_back(digits[half >> (60 - index % 16 * 4) & 0xF]);
    }
    return text;
}

} // namespace

std::string_view nameOf(HardwareVtepTable table) {
    return selectOf(table).name;
}

HardwareVtepRequest HardwareVtepRequest::whole() {
    HardwareVtepRequest request;
    for (Select const & select : selects) {
        request.tables_.push_back(select.table);
    }
    request.where_.resize(request.tables_.size());
    return request;
}

HardwareVtepRequest HardwareVtepRequest::survey() {
    HardwareVtepRequest request;
    request.tables_.push_back(logicalSwitch);
    request.where_.resize(1);
    return request;
}

HardwareVtepRequest HardwareVtepRequest::of(std::set<ovsdb::Uuid> const & logicalSwitches) {
    if (logicalSwitches.size() > mostPushed) {
        return whole();
    }
    HardwareVtepRequest request;
    request.pushed_ = logicalSwitches;
    for (Select const & select : selects) {
        if (!isMacTable(select.table)) {
            request.tables_.push_back(select.table);
            request.where_.emplace_back();
            continue;
        }
        for (auto const & row : logicalSwitches) {
            request.tables_.push_back(select.table);
            request.where_.emplace_back(row);
        }
    }
    return request;
}

std::string HardwareVtepRequest::text() const {
    std::string text = R"(["hardware_vtep")";
    for (std::size_t index = 0; index < tables_.size(); ++index) {
        Select const & select = selectOf(tables_[index]);
        text.append(R"(,{"op":"select","table":")").append(select.name).append(R"(","where":[)");
        if (auto const & row = where_[index]) {
            text.append(R"(["logical_switch","==",["uuid",")").append(textOf(*row)).append("\"]]");
        }
        text.append(R"(],"columns":[)").append(select.columns).append("]}");
    }
    return text.append("]");
}

} // namespace vxshow
