#include "VxlanController/mac/CopyEvpn.h"

#include "Pelo/Errors.h"
#include "VxlanController/command/CliTrace.h"
#include "VxlanController/command/InterruptPoll.h"
#include "VxlanController/mac/Target.h"
#include "VxlanController/mac/VtepFilter.h"

#include <string_view>

namespace VxlanController::Cli {

namespace {

/// The filters of a listing of EVPN tables.
struct EvpnTableFilter {
    Vxlan::VniOrNone vni;
    Nolt::EthAddr mac; ///< the zero address matches every MAC
    Vex::Ptr<VtepList const> const & vteps;
};

void insertHost(VcsEvpn::Host const & host, VniStatus & into, Nolt::EthAddr const & mac) {
    into.macVtepTableIs(MacVtep(mac, host.vtepIp(), Quay::Seqno32(host.moveCount())));
}

void insertFloodVtep(VniStatus & into, Nolt::IpAddr const & vtep) {
    into.macVtepFloodListTableIs(Nolt::EthAddr())->vtepIpFloodListIs(vtep, true);
}

/// Calls `copy(key, value)` for each entry of a shared table that is not a dead slot. Corruption
/// is reported to the table's own handler and ends the walk.
template <class Table, class Copy>
void forEachShared(Table const & table, Copy && copy) {
    InterruptPoll poll;
    try {
        for (auto it = table.begin(); it; ++it) {
            poll.step();
            auto const value = it.value();
            if (value != decltype(it.value())()) {
                copy(it.key(), value);
            }
        }
    } catch (Pelo::CorruptionDetectedException const & corruption) {
        table.handleCorruption(corruption.what());
    }
}

template <class Target>
void copyHosts(Vex::Ptr<VcsEvpn::HostTable const> const & table, Target && target,
               std::string_view name, EvpnTableFilter const & filter) {
    if (!table) {
        if (auto record = cliTrace().at(traceMissingState)) {
            record << "No hostTable created for " << name;
        }
        return;
    }
    forEachShared(*table, [&](VcsEvpn::HostKey const & key, VcsEvpn::Host const & host) {
        if (filter.vni.matches(key.vni) && (filter.mac.isZero() || filter.mac == key.mac) &&
            vtepIpFiltered(filter.vteps, host.vtepIp())) {
            insertHost(host, target.vniStatus(key.vni), key.mac);
        }
    });
}

template <class Target>
void copyFloodVteps(Vex::Ptr<VcsEvpn::FloodTable const> const & table, Target && target,
                    std::string_view name, EvpnTableFilter const & filter) {
    if (!table) {
        if (auto record = cliTrace().at(traceMissingState)) {
            record << "No floodTable created for " << name;
        }
        return;
    }
    forEachShared(*table, [&](VcsEvpn::FloodKey const & key, VcsEvpn::FloodEntry const &) {
        if (filter.vni.matches(key.vni) && filter.mac.isZero() &&
            vtepIpFiltered(filter.vteps, key.vtepIp)) {
            insertFloodVtep(target.vniStatus(key.vni), key.vtepIp);
        }
    });
}

/// Trace records about the advertised tables always say this, whatever the name of the table.
constexpr std::string_view advertisedSource = "EVPN";

} // namespace

Vex::Ptr<HostFloodTable const> hostFloodTable(Vex::Ptr<HostFloodTableList const> const & list,
                                              Vex::Name const & name) {
    Vex::Ptr<HostFloodTable const> tables;
    if (list) {
        tables = list->hostFloodTable(name);
    }
    if (!tables) {
        if (auto record = cliTrace().at(traceMissingState)) {
            record << "hostFloodTable not created for " << name.stringValue();
        }
    }
    return tables;
}

void copyHostTable(Vex::Ptr<VcsEvpn::HostTable const> const & table,
                   Vex::Ptr<SwitchDir> const & target, Vex::Name const & source,
                   Vxlan::VniOrNone vniFilter, Nolt::EthAddr macFilter,
                   Vex::Ptr<VtepList const> const & vtepFilter) {
    copyHosts(table, SourceTarget(target, source), source, {vniFilter, macFilter, vtepFilter});
}

void copyHostTable(Vex::Ptr<VcsEvpn::HostTable const> const & table,
                   Vex::Ptr<VniStatusList> const & vnis, Vxlan::VniOrNone vniFilter,
                   Nolt::EthAddr macFilter, Vex::Ptr<VtepList const> const & vtepFilter) {
    copyHosts(table, ListTarget(vnis), advertisedSource, {vniFilter, macFilter, vtepFilter});
}

void copyFloodTable(Vex::Ptr<VcsEvpn::FloodTable const> const & table,
                    Vex::Ptr<SwitchDir> const & target, Vex::Name const & source,
                    Vxlan::VniOrNone vniFilter, Nolt::EthAddr macFilter,
                    Vex::Ptr<VtepList const> const & vtepFilter) {
    copyFloodVteps(table, SourceTarget(target, source), source, {vniFilter, macFilter, vtepFilter});
}

void copyFloodTable(Vex::Ptr<VcsEvpn::FloodTable const> const & table,
                    Vex::Ptr<VniStatusList> const & vnis, Vxlan::VniOrNone vniFilter,
                    Nolt::EthAddr macFilter, Vex::Ptr<VtepList const> const & vtepFilter) {
    copyFloodVteps(table, ListTarget(vnis), advertisedSource, {vniFilter, macFilter, vtepFilter});
}

void copyHost(VcsEvpn::Host const & host, Vex::Ptr<SwitchDir> const & target,
              Vex::Name const & source, Vxlan::Vni vni, Nolt::EthAddr const & mac) {
    insertHost(host, SourceTarget(target, source).vniStatus(vni), mac);
}

void copyHost(VcsEvpn::Host const & host, Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni,
              Nolt::EthAddr const & mac) {
    insertHost(host, ListTarget(vnis).vniStatus(vni), mac);
}

void copyFloodEntry(Vex::Ptr<SwitchDir> const & target, Vex::Name const & source, Vxlan::Vni vni,
                    Nolt::IpAddr const & vtep) {
    insertFloodVtep(SourceTarget(target, source).vniStatus(vni), vtep);
}

void copyFloodEntry(Vex::Ptr<VniStatusList> const & vnis, Vxlan::Vni vni,
                    Nolt::IpAddr const & vtep) {
    insertFloodVtep(ListTarget(vnis).vniStatus(vni), vtep);
}

} // namespace VxlanController::Cli
