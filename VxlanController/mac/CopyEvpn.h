#pragma once

#include "Pelo/Errors.h"
#include "Vxlan/VniOrNone.h"
#include "VxlanController/command/CliTrace.h"
#include "VxlanController/command/InterruptPoll.h"
#include "VxlanController/mac/VtepFilter.h"
#include "state/FloodTable.h"
#include "state/HostTable.h"

namespace VxlanController::Cli {

/// The filters of a listing of EVPN tables.
struct EvpnTableFilter {
    Vxlan::VniOrNone vni;
    Nolt::EthAddr mac;      ///< the zero address matches every MAC
    VtepList const * vteps; ///< null or empty: every VTEP
};

/// The pair of tables under `name`, or null with a trace record if there is none.
Vex::Ptr<HostFloodTable const> hostFloodTable(Vex::Ptr<HostFloodTableList const> const & list,
                                              Vex::Name const & name);

/// Runs `copy`, which walks a shared table. Corruption is reported to the table's own handler
/// and ends the copy of this table; entries copied before it are kept.
template <class Table, class Copy>
void copySharedTable(Table const & table, Copy && copy) {
    try {
        copy();
    } catch (Pelo::CorruptionDetectedException const & corruption) {
        table.handleCorruption(corruption.what());
    }
}

/// Copies the hosts that `filter` selects as unicast entries under their VNI.
template <class Target>
void copyHostTable(VcsEvpn::HostTable const & table, Target & target,
                   EvpnTableFilter const & filter) {
    InterruptPoll poll;
    copySharedTable(table, [&] {
        for (auto it = table.begin(); it; ++it) {
            poll.step();
            VcsEvpn::HostKey const key = it.key();
            VcsEvpn::Host const host = it.value();
            bool const deadSlot = host == VcsEvpn::Host();
            if (!deadSlot && filter.vni.matches(key.vni) &&
                (filter.mac.isZero() || filter.mac == key.mac) &&
                vtepIpFiltered(filter.vteps, host.vtepIp())) {
                target.vniStatus(key.vni).macVtepTableIs(
                    MacVtep(key.mac, host.vtepIp(), Quay::Seqno32(host.moveCount())));
            }
        }
    });
}

/// Copies the flood VTEPs that `filter` selects: those of one VNI form one flood list under the
/// zero MAC. Flood entries have no MAC, so a MAC filter excludes all of them.
template <class Target>
void copyFloodTable(VcsEvpn::FloodTable const & table, Target & target,
                    EvpnTableFilter const & filter) {
    InterruptPoll poll;
    copySharedTable(table, [&] {
        for (auto it = table.begin(); it; ++it) {
            poll.step();
            VcsEvpn::FloodKey const key = it.key();
            bool const deadSlot = it.value() == VcsEvpn::FloodEntry();
            if (!deadSlot && filter.vni.matches(key.vni) && filter.mac.isZero() &&
                vtepIpFiltered(filter.vteps, key.vtepIp)) {
                target.vniStatus(key.vni)
                    .macVtepFloodListTableIs(Nolt::EthAddr())
                    ->vtepIpFloodListIs(key.vtepIp, true);
            }
        }
    });
}

/// Copies both tables of a pair, the hosts first. A missing table is skipped with a trace
/// record that ends in `name`.
template <class Target>
void copyEvpnTables(HostFloodTable const & tables, Target & target, EvpnTableFilter const & filter,
                    std::string_view name) {
    if (auto const & hosts = tables.hostTable()) {
        copyHostTable(*hosts, target, filter);
    } else if (auto record = cliTrace().at(traceMissingState)) {
        record << "No hostTable created for " << name;
    }
    if (auto const & flood = tables.floodTable()) {
        copyFloodTable(*flood, target, filter);
    } else if (auto record = cliTrace().at(traceMissingState)) {
        record << "No floodTable created for " << name;
    }
}

} // namespace VxlanController::Cli
