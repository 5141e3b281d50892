#include "vxshow/mount/hardware_vtep/HardwareVtepJoin.h"

#include "vxshow/mount/json/Shown.h"
#include "vxshow/mount/json/Values.h"

namespace vxshow {

namespace {

constexpr std::string_view aKey = "a VNI from 0 to 16777215";

/// Broadcast, and every address that has no row of its own.
constexpr std::string_view unknownDestination = "unknown-dst";

std::string inQuotes(std::string_view text) {
    return '"' + shownText(text) + '"';
}

std::optional<Vxlan::Vni> vniOfKey(std::int64_t key) {
    if (key < Vxlan::Vni::min || key > Vxlan::Vni::max) {
        return std::nullopt;
    }
    return Vxlan::Vni(static_cast<Vex::U32>(key));
}

/// An address of one host: not the zero one, which stands for everything else.
std::optional<Nolt::EthAddr> hostMac(std::string_view text) {
    auto const mac = Nolt::EthAddr::tryFromString(text);
    return mac && !mac->isZero() ? mac : std::nullopt;
}

/// The address to which frames for `text` are flooded.
std::optional<Nolt::EthAddr> floodMac(std::string_view text) {
    return text == unknownDestination ? Nolt::EthAddr() : hostMac(text);
}

/// Zero is nobody's address: a listing that showed it would seem to know one.
std::optional<Nolt::IpAddr> vtepIp(std::string_view text) {
    auto const ip = Nolt::IpAddr::tryFromString(text);
    return ip && !ip->isZero() ? ip : std::nullopt;
}

std::optional<Nolt::IpGenAddr> someIp(std::string_view text) {
    auto const ip = Nolt::IpGenAddr::tryFromString(text);
    return ip && !ip->isNone() ? ip : std::nullopt;
}

template <class Rows, class Row>
void insertNew(Rows & rows, ovsdb::Reference const & identity, Row && row) {
    if (!rows.emplace(identity.row, std::forward<Row>(row)).second) {
        throw Refusal{identity.at, "it once", " again"};
    }
}

template <class Rows>
auto & rowAt(Rows & rows, ovsdb::Reference const & to, HardwareVtepTable table) {
    auto const found = rows.find(to.row);
    if (found == rows.end()) {
        throw Refusal{to.at, std::string("the _uuid of a row of ").append(nameOf(table))};
    }
    return found->second;
}

} // namespace

void HardwareVtepJoin::logicalSwitch(ovsdb::Reference const & row, std::string name, Key key) {
    insertNew(logicalSwitches_, row, LogicalSwitch{std::move(name), key});
}

void HardwareVtepJoin::locator(ovsdb::Reference const & row, std::string_view ip, Key key) {
    insertNew(locators_, row, Locator{std::string(ip), vtepIp(ip), key});
}

void HardwareVtepJoin::locatorSet(ovsdb::Reference const & row, References const & locators) {
    std::vector<Locator *> members;
    for (auto const & member : locators) {
        members.push_back(&locatorAt(member));
    }
    insertNew(locatorSets_, row, std::move(members));
}

void HardwareVtepJoin::physicalSwitch(std::string const & name,
                                      std::vector<std::string> const & ips,
                                      References const & ports) {
    auto & known = state_.switches[name];
    state_.local[name];
    for (auto const & text : ips) {
        auto const ip = vtepIp(text);
        if (!ip) {
            findings_.leftOut.add("Physical_Switch " + inQuotes(name) + ": tunnel_ips " +
                                  inQuotes(text) + ", expected " + std::string(anIpv4Address));
            continue;
        }
        known.vteps.insert(*ip);
        switchesByIp_[*ip].insert(name);
    }
    for (auto const & port : ports) {
        switchPorts_[name].insert(port.row);
    }
}

void HardwareVtepJoin::port(ovsdb::Reference const & row, References const & logicalSwitches) {
    std::vector<ovsdb::Uuid> bound;
    for (auto const & to : logicalSwitches) {
        switchAt(to);
        bound.push_back(to.row);
    }
    insertNew(ports_, row, std::move(bound));
}

void HardwareVtepJoin::router(std::string const & name,
                              std::vector<std::pair<std::string, ovsdb::Reference>> const & ports,
                              std::vector<std::pair<std::string, std::string>> const & routes) {
    auto & known = state_.routers[name];
    auto const leaveOut = [&](std::string_view column, std::string const & found,
                              std::string_view expected) {
        findings_.leftOut.add("Logical_Router " + inQuotes(name) + ": " + std::string(column) +
                              " " + found + ", expected " + std::string(expected));
    };
    for (auto const & [text, to] : ports) {
        auto & logicalSwitch = switchAt(to);
        logicalSwitch.routers.insert(name);
        auto const ip = Nolt::IpGenAddrWithMask::tryFromString(text);
        auto const vni =
            logicalSwitch.key ? vniOfKey(*logicalSwitch.key) : std::optional<Vxlan::Vni>();
        if (!ip || ip->isNone()) {
            leaveOut("switch_binding", inQuotes(text),
                     "an address with its prefix length such as 10.1.2.3/24");
        } else if (!vni) {
            leaveOut("switch_binding",
                     inQuotes(text) + " to " + inQuotes(logicalSwitch.name) +
                         (logicalSwitch.key
                              ? " with tunnel_key " + std::to_string(*logicalSwitch.key)
                              : " without a tunnel_key"),
                     aKey);
        } else {
            known.ports[*ip].insert(RouterPort{*vni});
        }
    }
    for (auto const & [prefixText, nexthopText] : routes) {
        auto const prefix = Nolt::IpGenPrefix::tryFromString(prefixText);
        auto const nexthop = someIp(nexthopText);
        if (!prefix || prefix->isNone()) {
            leaveOut("static_routes", inQuotes(prefixText), "a prefix such as 10.1.0.0/16");
        } else if (!nexthop) {
            leaveOut("static_routes", inQuotes(prefixText) + " to " + inQuotes(nexthopText),
                     anIpAddress);
        } else {
            known.routes[*prefix].insert(*nexthop);
        }
    }
}

HardwareVtepJoin::LogicalSwitch & HardwareVtepJoin::switchAt(ovsdb::Reference const & to) {
    return rowAt(logicalSwitches_, to, HardwareVtepTable::logicalSwitch);
}

HardwareVtepJoin::Locator & HardwareVtepJoin::locatorAt(ovsdb::Reference const & to) {
    return rowAt(locators_, to, HardwareVtepTable::physicalLocator);
}

void HardwareVtepJoin::leaveOut(MacRow const & row, LogicalSwitch const & logicalSwitch,
                                std::string_view column, std::string_view found,
                                std::string_view expected) {
    std::string what(nameOf(row.table));
    what.append(" ").append(inQuotes(row.mac)).append(" in ").append(inQuotes(logicalSwitch.name));
    what.append(": ").append(column).append(" ").append(found);
    findings_.leftOut.add(what.append(", expected ").append(expected));
}

std::optional<Vxlan::Vni> HardwareVtepJoin::vniOf(MacRow const & row,
                                                  LogicalSwitch const & logicalSwitch,
                                                  Locator const & locator) {
    auto const & key = logicalSwitch.key ? logicalSwitch.key : locator.key;
    auto const vni = key ? vniOfKey(*key) : std::optional<Vxlan::Vni>();
    if (!vni) {
        leaveOut(row, logicalSwitch, "tunnel_key", key ? std::to_string(*key) : "of neither", aKey);
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
        return leaveOut(row, logicalSwitch, "dst_ip", inQuotes(locator.text), anIpv4Address);
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
        findings_.unplaced.add(std::string(nameOf(row.table)) + " " + inQuotes(row.mac) + " in " +
                               inQuotes(logicalSwitch.name) + " at " + locator.ip->stringValue());
        take(*vni, *locator.ip, state_.local[name_]);
    }
}

std::optional<Nolt::IpGenAddr> HardwareVtepJoin::bindingOf(MacRow const & row,
                                                           LogicalSwitch const & logicalSwitch) {
    if (row.ip.empty()) {
        return std::nullopt;
    }
    auto const ip = someIp(row.ip);
    if (!ip) {
        leaveOut(row, logicalSwitch, "ipaddr", inQuotes(row.ip), anIpAddress);
    }
    return ip;
}

void HardwareVtepJoin::unicast(MacRow const & row) {
    auto & logicalSwitch = switchAt(row.logicalSwitch);
    auto & locator = locatorAt(row.target);
    auto const mac = hostMac(row.mac);
    if (!mac) {
        return leaveOut(row, logicalSwitch, "MAC", inQuotes(row.mac), anEthernetAddress);
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
    auto & logicalSwitch = switchAt(row.logicalSwitch);
    auto & members = rowAt(locatorSets_, row.target, HardwareVtepTable::physicalLocatorSet);
    auto const mac = floodMac(row.mac);
    if (!mac) {
        return leaveOut(row, logicalSwitch, "MAC", inQuotes(row.mac),
                        "an Ethernet address or unknown-dst");
    }
    auto ip = bindingOf(row, logicalSwitch);
    if (ip && mac->isZero()) {
        leaveOut(row, logicalSwitch, "ipaddr", inQuotes(row.ip), "none, as this is no address");
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
    for (auto const & [row, logicalSwitch] : logicalSwitches_) {
        if (!logicalSwitch.key || vniOfKey(*logicalSwitch.key) == vni) {
            rows.insert(row);
        }
    }
    return rows;
}

/// A logical switch without any address is known all the same: to whom it was told, and to each
/// switch with a port in it. With such a port a switch is where its routers are, too.
void HardwareVtepJoin::addVnis() {
    for (auto const & [row, logicalSwitch] : logicalSwitches_) {
        if (auto const vni = logicalSwitch.key ? vniOfKey(*logicalSwitch.key) : std::nullopt) {
            state_.remote.vnis.push_back(*vni);
        }
    }
    for (auto const & [name, ports] : switchPorts_) {
        for (auto const & port : ports) {
            auto const bound = ports_.find(port);
            if (bound == ports_.end()) {
                continue;
            }
            for (auto const & row : bound->second) {
                auto const & logicalSwitch = logicalSwitches_.at(row);
                state_.switches[name].routers.insert(logicalSwitch.routers.begin(),
                                                     logicalSwitch.routers.end());
                if (auto const vni =
                        logicalSwitch.key ? vniOfKey(*logicalSwitch.key) : std::nullopt) {
                    state_.local[name].vnis.push_back(*vni);
                }
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
        look(" (local to " + inQuotes(name) + ")", side.bindings);
    }
}

std::pair<SourceState, SourceFindings> HardwareVtepJoin::finished() {
    addVnis();
    state_.settle();
    findDisputes();
    return {std::move(state_), std::move(findings_)};
}

} // namespace vxshow
