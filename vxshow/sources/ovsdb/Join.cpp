#include "vxshow/sources/ovsdb/Join.h"

#include "vxshow/sources/ovsdb/Content.h"
#include "vxshow/sources/ovsdb/LogicalRouter.h"
#include "vxshow/text/JsonAddresses.h"
#include "vxshow/text/Quoting.h"

#include <algorithm>

namespace vxshow::sources::ovsdb {

void Join::physicalSwitch(std::string const & name, std::vector<std::string> const & ips,
                          References const & ports) {
    auto & known = facts_.switches[name];
    auto & local = facts_.local[name];
    for (auto const & text : ips) {
        auto const ip = vtepIp(text);
        if (!ip) {
            findings_.leftOut.add(Subject::localMacs | Subject::localBindings | Subject::routers,
                                  "Physical_Switch " + text::shownInQuotes(name) + ": tunnel_ips " +
                                      text::shownInQuotes(text) + ", expected " +
                                      std::string(text::anIpv4Address));
            continue;
        }
        known.vteps.insert(*ip);
        switchesByIp_[*ip].insert(&local);
    }
    auto & own = switchPorts_[name];
    for (auto const & port : ports) {
        own.insert(port.row);
    }
}

void Join::router(std::string const & name,
                  std::vector<std::pair<std::string, Reference>> const & ports,
                  std::vector<std::pair<std::string, std::string>> const & routes) {
    budget_.spend(ports.size() + routes.size());
    auto & [own, facts] = *facts_.routers.try_emplace(name).first;
    LogicalRouter router(own, facts, findings_.leftOut);
    for (auto const & [address, to] : ports) {
        auto & logicalSwitch = rows_.logicalSwitch(to);
        logicalSwitch.routers.insert(&own);
        router.port(address, logicalSwitch);
    }
    for (auto const & [prefix, nexthop] : routes) {
        router.route(prefix, nexthop);
    }
}

void Join::leaveOut(MacRow const & row, Subjects about, LogicalSwitch const & logicalSwitch,
                    std::string_view column, std::string_view found, std::string_view expected) {
    std::string what(nameOf(row.table));
    what.append(" ")
        .append(text::shownInQuotes(row.mac))
        .append(" in ")
        .append(text::shownInQuotes(logicalSwitch.name));
    what.append(": ").append(column).append(" ").append(found);
    findings_.leftOut.add(about, what.append(", expected ").append(expected));
}

std::optional<Vxlan::Vni> Join::vniOf(MacRow const & row, LogicalSwitch const & logicalSwitch,
                                      Locator const & locator) {
    auto const & key = logicalSwitch.key ? logicalSwitch.key : locator.key;
    auto const vni = key ? vniOfKey(*key) : std::nullopt;
    if (!vni) {
        leaveOut(row, aboutAll(row), logicalSwitch, "tunnel_key",
                 key ? std::to_string(*key) : "missing", aKey);
    }
    return vni;
}

std::set<SideFacts *> const & Join::switchesAt(Locator & locator) const {
    static std::set<SideFacts *> const none;
    if (!locator.switches) {
        auto const found = switchesByIp_.find(*locator.ip);
        locator.switches = found == switchesByIp_.end() ? &none : &found->second;
    }
    return *locator.switches;
}

std::size_t Join::sideCount(Side side, Locator & locator) const {
    return side == Side::remote ? 1 : std::max<std::size_t>(switchesAt(locator).size(), 1);
}

template <class Take>
void Join::eachSide(Side side, Locator & locator, Take && take) {
    if (side == Side::remote) {
        return take(facts_.remote);
    }
    auto const & switches = switchesAt(locator);
    for (SideFacts * const one : switches) {
        step();
        take(*one);
    }
    if (switches.empty()) {
        take(facts_.local[name_]);
    }
}

template <class What>
void Join::checkPlaced(Side side, Subjects about, Locator & locator, What && what) {
    if (side == Side::local && switchesAt(locator).empty()) {
        findings_.unplaced.add(about, what().append(" at ").append(locator.ip->stringValue()));
    }
}

std::optional<Nolt::IpGenAddr> Join::bindingOf(MacRow const & row,
                                               LogicalSwitch const & logicalSwitch) {
    if (row.ip.empty()) {
        return std::nullopt;
    }
    auto const ip = someIp(row.ip);
    if (!ip) {
        leaveOut(row, aboutBinding(row.side), logicalSwitch, "ipaddr", text::shownInQuotes(row.ip),
                 text::anIpAddress);
    }
    return ip;
}

void Join::unicast(MacRow const & row) {
    auto & logicalSwitch = rows_.logicalSwitch(row.logicalSwitch);
    auto & locator = rows_.locator(row.target);
    auto const mac = hostMac(row.mac);
    if (!mac) {
        return leaveOut(row, aboutAll(row), logicalSwitch, "MAC", text::shownInQuotes(row.mac),
                        text::anEthernetAddress);
    }
    auto const ip = bindingOf(row, logicalSwitch);
    if (!locator.ip) {
        return leaveOut(row, aboutAll(row), logicalSwitch, "dst_ip",
                        text::shownInQuotes(locator.text), text::anIpv4Address);
    }
    auto const vni = vniOf(row, logicalSwitch, locator);
    if (!vni) {
        return;
    }
    auto const what = [&] {
        return std::string(nameOf(row.table)) + " " + text::shownInQuotes(row.mac) + " in " +
               text::shownInQuotes(logicalSwitch.name);
    };
    checkPlaced(row.side, aboutAll(row), locator, what);
    auto const sides = sideCount(row.side, locator);
    budget_.spend(sides * (ip ? 2 : 1));
    Entry const entry{&locator, *vni, *mac, ip};
    if (sides == 1) [[likely]] {
        return add(entry, row.side);
    }
    shared_.push_back(entry);
}

void Join::add(Entry const & entry, Side side) {
    eachSide(side, *entry.locator, [&](SideFacts & to) {
        to.macs.push_back({entry.vni, entry.mac, *entry.locator->ip});
        if (entry.ip) {
            to.bindings.push_back({entry.vni, *entry.ip, entry.mac});
        }
    });
}

void Join::leaveOut(LocatorSet const & set, Side side, std::string_view found,
                    std::string_view expected) {
    std::string what(nameOf(Table::physicalLocatorSet));
    what.append(" ").append(textOf(set.row)).append(": ").append(found);
    findings_.leftOut.add(aboutMac(side) | aboutBinding(side),
                          what.append(", expected ").append(expected));
}

void Join::checkAddresses(LocatorSet & set, Side side) {
    if (std::exchange(set.addressesChecked, true)) {
        return;
    }
    std::erase_if(set.members, [&](Locator const * locator) {
        step();
        if (!locator->ip) {
            leaveOut(set, side, "dst_ip " + text::shownInQuotes(locator->text),
                     text::anIpv4Address);
        }
        return !locator->ip;
    });
}

void Join::checkKeys(LocatorSet & set, Side side) {
    if (std::exchange(set.keysChecked, true)) {
        return;
    }
    for (Locator const * const locator : set.members) {
        step();
        if (!locator->vni()) {
            std::string const at(locator->ip->stringValue());
            leaveOut(set, side,
                     locator->key ? "tunnel_key " + std::to_string(*locator->key) + " of " + at
                                  : "tunnel_key of " + at + " missing",
                     aKey);
        }
    }
}

template <class Take>
void Join::eachMember(Flooding const & flooding, Take && take) {
    for (Locator * const locator : flooding.set->members) {
        step();
        if (auto const vni = flooding.vni ? flooding.vni : locator->vni()) {
            take(*vni, *locator);
        }
    }
}

void Join::countFlood(Flooding const & flooding) {
    auto const side = sideOf(flooding.table);
    eachMember(flooding, [&](Vxlan::Vni vni, Locator & locator) {
        checkPlaced(side, aboutMac(side), locator, [&] {
            auto const mac =
                flooding.mac.isZero() ? "unknown-dst" : std::string(flooding.mac.stringValue());
            return std::string(nameOf(flooding.table)) + " \"" + mac + "\" in VNI " +
                   std::string(vni.stringValue());
        });
        budget_.spend(sideCount(side, locator));
    });
}

std::set<Join::Place> Join::placesOf(Flooding const & flooding) {
    std::set<Place> places;
    eachMember(flooding, [&](Vxlan::Vni vni, Locator & locator) {
        eachSide(sideOf(flooding.table), locator,
                 [&](SideFacts & to) { places.emplace(&to, vni); });
    });
    return places;
}

void Join::flood(Flooding const & flooding, std::vector<Nolt::IpGenAddr> const & ips) {
    eachMember(flooding, [&](Vxlan::Vni vni, Locator & locator) {
        eachSide(sideOf(flooding.table), locator, [&](SideFacts & to) {
            to.floods.push_back({vni, flooding.mac, *locator.ip});
        });
    });
    if (ips.empty()) {
        return;
    }
    for (auto const & [side, vni] : placesOf(flooding)) {
        for (auto const & ip : ips) {
            step();
            side->bindings.push_back({vni, ip, flooding.mac});
        }
    }
}

void Join::multicast(MacRow const & row) {
    auto & logicalSwitch = rows_.logicalSwitch(row.logicalSwitch);
    auto & set = rows_.locatorSet(row.target);
    auto const mac = floodMac(row.mac);
    if (!mac) {
        return leaveOut(row, aboutAll(row), logicalSwitch, "MAC", text::shownInQuotes(row.mac),
                        "an Ethernet address or unknown-dst");
    }
    auto ip = bindingOf(row, logicalSwitch);
    if (ip && mac->isZero()) {
        leaveOut(row, aboutBinding(row.side), logicalSwitch, "ipaddr", text::shownInQuotes(row.ip),
                 "none with unknown-dst");
        ip.reset();
    }
    auto const vni = logicalSwitch.vni();
    if (logicalSwitch.key && !vni) {
        return leaveOut(row, aboutAll(row), logicalSwitch, "tunnel_key",
                        std::to_string(*logicalSwitch.key), aKey);
    }
    checkAddresses(set, row.side);
    if (!vni) {
        checkKeys(set, row.side);
    }
    auto const [flooded, isNew] = flooded_.try_emplace({row.table, vni, *mac, &set});
    auto & [flooding, list] = *flooded;
    if (isNew) {
        countFlood(flooding);
    }
    if (ip) {
        list.places = list.places ? list.places : placesOf(flooding).size();
        budget_.spend(*list.places);
        list.ips.push_back(*ip);
    }
}

std::set<Uuid> Join::logicalSwitchesOf(Vxlan::Vni vni) {
    std::set<Uuid> rows;
    for (auto const & [row, logicalSwitch] : rows_.logicalSwitches()) {
        step();
        if (!logicalSwitch.key || logicalSwitch.vni() == vni) {
            rows.insert(row);
        }
    }
    return rows;
}

void Join::addBound(std::string const & name, LogicalSwitch const & logicalSwitch) {
    auto & routers = facts_.switches[name].routers;
    for (std::string const * const router : logicalSwitch.routers) {
        step();
        routers.insert(*router);
    }
    if (auto const vni = logicalSwitch.vni()) {
        facts_.local[name].vnis.push_back(*vni);
    }
}

/// A logical switch without any entry is known all the same: on the remote side, and to each
/// switch with a port in it.
void Join::addVnis() {
    for (auto const & [row, logicalSwitch] : rows_.logicalSwitches()) {
        step();
        if (auto const vni = logicalSwitch.vni()) {
            budget_.spend();
            facts_.remote.vnis.push_back(*vni);
            facts_.details.vniNames.push_back({*vni, logicalSwitch.name});
        }
    }
    std::vector<std::pair<std::string const *, std::vector<LogicalSwitch const *>>> allBound;
    for (auto const & [name, ports] : switchPorts_) {
        auto const bound = boundTo(ports);
        for (LogicalSwitch const * const one : bound) {
            step();
            for (std::string const * const router : one->routers) {
                step();
                budget_.spend(factsOfRouter(*router));
            }
            budget_.spend(one->vni() ? 1 : 0);
        }
        allBound.emplace_back(&name, std::vector(bound.begin(), bound.end()));
    }
    for (auto const & [name, bound] : allBound) {
        for (LogicalSwitch const * const one : bound) {
            addBound(*name, *one);
        }
    }
}

std::set<Join::LogicalSwitch const *> Join::boundTo(std::set<Uuid> const & ports) {
    std::set<LogicalSwitch const *> bound;
    for (auto const & port : ports) {
        step();
        for (LogicalSwitch const * const one : rows_.boundTo(port)) {
            step();
            // One switch after the other can have the same ports, so what comes to no fact is not
            // kept.
            if (one->vni() || !one->routers.empty()) {
                bound.insert(one);
            }
        }
    }
    return bound;
}

void Join::findDisputes() {
    auto const search = [&](Side side, std::string const & shown,
                            std::vector<IpBinding> const & bindings) {
        bool within = false;
        for (std::size_t index = 1; index < bindings.size(); ++index) {
            step();
            auto const & before = bindings[index - 1];
            auto const & now = bindings[index];
            bool const same = before.vni == now.vni && before.ip == now.ip;
            if (same && !within) {
                findings_.disputed.add(aboutBinding(side), now.ip.stringValue() + " in VNI " +
                                                               now.vni.stringValue() + shown);
            }
            within = same;
        }
    };
    search(Side::remote, " (remote)", facts_.remote.bindings);
    for (auto const & [name, side] : facts_.local) {
        search(Side::local, " (local to " + text::shownInQuotes(name) + ")", side.bindings);
    }
}

std::pair<Facts, Findings> Join::finished() {
    addVnis();
    for (Entry const & entry : shared_) {
        add(entry, Side::local);
    }
    for (auto const & [flooding, list] : flooded_) {
        flood(flooding, list.ips);
    }
    facts_.settle(watch_);
    findDisputes();
    return {std::move(facts_), std::move(findings_)};
}

} // namespace vxshow::sources::ovsdb
