#include "vxshow/mount/hardware_vtep/HardwareVtepJoin.h"

#include "vxshow/mount/hardware_vtep/HardwareVtepContent.h"
#include "vxshow/mount/hardware_vtep/HardwareVtepRouter.h"
#include "vxshow/mount/json/Shown.h"
#include "vxshow/mount/json/Values.h"

namespace vxshow {

void HardwareVtepJoin::physicalSwitch(std::string const & name,
                                      std::vector<std::string> const & ips,
                                      References const & ports) {
    auto & known = state_.switches[name];
    state_.local[name];
    for (auto const & text : ips) {
        auto const ip = hardware_vtep::vtepIp(text);
        if (!ip) {
            findings_.leftOut.add("Physical_Switch " + shownInQuotes(name) + ": tunnel_ips " +
                                  shownInQuotes(text) + ", expected " + std::string(anIpv4Address));
            continue;
        }
        known.vteps.insert(*ip);
        switchesByIp_[*ip].insert(name);
    }
    for (auto const & port : ports) {
        switchPorts_[name].insert(port.row);
    }
}

void HardwareVtepJoin::router(std::string const & name,
                              std::vector<std::pair<std::string, ovsdb::Reference>> const & ports,
                              std::vector<std::pair<std::string, std::string>> const & routes) {
    HardwareVtepRouter router(name, state_.routers[name], findings_.leftOut);
    for (auto const & [address, to] : ports) {
        auto & logicalSwitch = rows_.logicalSwitch(to);
        logicalSwitch.routers.insert(name);
        router.port(address, logicalSwitch);
    }
    for (auto const & [prefix, nexthop] : routes) {
        router.route(prefix, nexthop);
    }
}

void HardwareVtepJoin::leaveOut(MacRow const & row, LogicalSwitch const & logicalSwitch,
                                std::string_view column, std::string_view found,
                                std::string_view expected) {
    std::string what(nameOf(row.table));
    what.append(" ")
        .append(shownInQuotes(row.mac))
        .append(" in ")
        .append(shownInQuotes(logicalSwitch.name));
    what.append(": ").append(column).append(" ").append(found);
    findings_.leftOut.add(what.append(", expected ").append(expected));
}

std::optional<Vxlan::Vni> HardwareVtepJoin::vniOf(MacRow const & row,
                                                  LogicalSwitch const & logicalSwitch,
                                                  Locator const & locator) {
    auto const & key = logicalSwitch.key ? logicalSwitch.key : locator.key;
    auto const vni = key ? hardware_vtep::vniOfKey(*key) : std::nullopt;
    if (!vni) {
        leaveOut(row, logicalSwitch, "tunnel_key", key ? std::to_string(*key) : "of neither",
                 hardware_vtep::aKey);
    }
    return vni;
}

std::vector<SourceSide *> const & HardwareVtepJoin::switchesAt(Locator & locator) {
    if (!locator.switches) {
        locator.switches.emplace();
        auto const found = switchesByIp_.find(*locator.ip);
        if (found != switchesByIp_.end()) {
            for (auto const & name : found->second) {
                locator.switches->push_back(&state_.local[name]);
            }
        }
    }
    return *locator.switches;
}

template <class Take>
void HardwareVtepJoin::place(MacRow const & row, LogicalSwitch const & logicalSwitch,
                             Locator & locator, Take && take) {
    if (!locator.ip) {
        return leaveOut(row, logicalSwitch, "dst_ip", shownInQuotes(locator.text), anIpv4Address);
    }
    auto const vni = vniOf(row, logicalSwitch, locator);
    if (!vni) {
        return;
    }
    if (row.side == Side::remote) {
        return take(*vni, *locator.ip, state_.remote);
    }
    auto const & switches = switchesAt(locator);
    for (SourceSide * const side : switches) {
        take(*vni, *locator.ip, *side);
    }
    if (switches.empty()) {
        findings_.unplaced.add(std::string(nameOf(row.table)) + " " + shownInQuotes(row.mac) +
                               " in " + shownInQuotes(logicalSwitch.name) + " at " +
                               locator.ip->stringValue());
        take(*vni, *locator.ip, state_.local[name_]);
    }
}

std::optional<Nolt::IpGenAddr> HardwareVtepJoin::bindingOf(MacRow const & row,
                                                           LogicalSwitch const & logicalSwitch) {
    if (row.ip.empty()) {
        return std::nullopt;
    }
    auto const ip = hardware_vtep::someIp(row.ip);
    if (!ip) {
        leaveOut(row, logicalSwitch, "ipaddr", shownInQuotes(row.ip), anIpAddress);
    }
    return ip;
}

void HardwareVtepJoin::unicast(MacRow const & row) {
    auto & logicalSwitch = rows_.logicalSwitch(row.logicalSwitch);
    auto & locator = rows_.locator(row.target);
    auto const mac = hardware_vtep::hostMac(row.mac);
    if (!mac) {
        return leaveOut(row, logicalSwitch, "MAC", shownInQuotes(row.mac), anEthernetAddress);
    }
    auto const ip = bindingOf(row, logicalSwitch);
    place(row, logicalSwitch, locator, [&](Vxlan::Vni vni, Nolt::IpAddr vtep, SourceSide & side) {
        side.macs.push_back({vni, *mac, vtep});
        if (ip) {
            side.bindings.push_back({vni, *ip, *mac});
        }
    });
}

void HardwareVtepJoin::multicast(MacRow const & row) {
    auto & logicalSwitch = rows_.logicalSwitch(row.logicalSwitch);
    auto const & members = rows_.locatorSet(row.target);
    auto const mac = hardware_vtep::floodMac(row.mac);
    if (!mac) {
        return leaveOut(row, logicalSwitch, "MAC", shownInQuotes(row.mac),
                        "an Ethernet address or unknown-dst");
    }
    auto ip = bindingOf(row, logicalSwitch);
    if (ip && mac->isZero()) {
        leaveOut(row, logicalSwitch, "ipaddr", shownInQuotes(row.ip),
                 "none, as this is no address");
        ip.reset();
    }
    for (Locator * const locator : members) {
        place(row, logicalSwitch, *locator,
              [&](Vxlan::Vni vni, Nolt::IpAddr vtep, SourceSide & side) {
                  side.floods.push_back({vni, *mac, vtep});
                  if (ip) {
                      side.bindings.push_back({vni, *ip, *mac});
                  }
              });
    }
}

std::set<ovsdb::Uuid> HardwareVtepJoin::logicalSwitchesOf(Vxlan::Vni vni) const {
    std::set<ovsdb::Uuid> rows;
    for (auto const & [row, logicalSwitch] : rows_.logicalSwitches()) {
        if (!logicalSwitch.key || logicalSwitch.vni() == vni) {
            rows.insert(row);
        }
    }
    return rows;
}

void HardwareVtepJoin::addBound(std::string const & name, LogicalSwitch const & logicalSwitch) {
    state_.switches[name].routers.insert(logicalSwitch.routers.begin(),
                                         logicalSwitch.routers.end());
    if (auto const vni = logicalSwitch.vni()) {
        state_.local[name].vnis.push_back(*vni);
    }
}

/// A logical switch without any address is known all the same: to whom it was told, and to each
/// switch with a port in it.
void HardwareVtepJoin::addVnis() {
    for (auto const & [row, logicalSwitch] : rows_.logicalSwitches()) {
        if (auto const vni = logicalSwitch.vni()) {
            state_.remote.vnis.push_back(*vni);
        }
    }
    for (auto const & [name, ports] : switchPorts_) {
        for (auto const & port : ports) {
            for (LogicalSwitch const * const bound : rows_.boundTo(port)) {
                addBound(name, *bound);
            }
        }
    }
}

void HardwareVtepJoin::findDisputes() {
    auto const look = [&](std::string const & side, std::vector<IpBinding> const & bindings) {
        bool within = false;
        for (std::size_t index = 1; index < bindings.size(); ++index) {
            auto const & before = bindings[index - 1];
            auto const & now = bindings[index];
            bool const same = before.vni == now.vni && before.ip == now.ip;
            if (same && !within) {
                findings_.disputed.add(now.ip.stringValue() + " in VNI " + now.vni.stringValue() +
                                       side);
            }
            within = same;
        }
    };
    look(" (remote)", state_.remote.bindings);
    for (auto const & [name, side] : state_.local) {
        look(" (local to " + shownInQuotes(name) + ")", side.bindings);
    }
}

std::pair<SourceState, SourceFindings> HardwareVtepJoin::finished() {
    addVnis();
    state_.settle();
    findDisputes();
    return {std::move(state_), std::move(findings_)};
}

} // namespace vxshow
