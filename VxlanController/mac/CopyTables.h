#pragma once

#include "VxlanController/command/ForEachSorted.h"
#include "VxlanController/mac/VtepFilter.h"
#include "state/VniTables.h"

namespace VxlanController::Cli {

/// The filters of a listing of MAC tables.
struct MacTableFilter {
    Nolt::EthAddr mac; ///< the zero address matches every MAC
    Vex::Ptr<VtepList const> const & vteps;
};

/// Inserts a published entry into the model. Every VTEP becomes a member of its set, whatever
/// flag the state holds for it.
void insertMacVtep(MacVtepV2 const & entry, VniStatus & into);
void insertMultiPath(Nolt::EthAddr const & mac, MacVtepMultiPathV2 const & entry, VniStatus & into,
                     InterruptPoll & poll);
void insertFloodList(MacVtepFloodListV2 const & entry, VniStatus & into, InterruptPoll & poll);

/// Copies what `filter` selects from the three MAC tables of one VNI: a single MAC by three
/// look-ups, all MACs by walking each table. A MAC in several tables is copied from each of
/// them, except that a walk skips its flood list where `Target::floodListYieldsToMultipath`.
template <class Target>
void copyTables(VniTables const & status, Vxlan::Vni vni, Target & target,
                MacTableFilter const & filter) {
    InterruptPoll poll;
    auto const unicast = [&](MacVtepV2 const & entry) {
        insertMacVtep(entry, target.vniStatus(vni));
    };
    auto const multiPath = [&](MacVtepMultiPathV2 const & entry) {
        insertMultiPath(entry.macAddr(), entry, target.vniStatus(vni), poll);
    };
    auto const floodList = [&](MacVtepFloodListV2 const & entry) {
        insertFloodList(entry, target.vniStatus(vni), poll);
    };

    if (!filter.mac.isZero()) {
        if (auto const entry = status.macVtepTable(filter.mac);
            entry != MacVtepV2() && macVtepIpFiltered(filter.vteps, entry)) {
            unicast(entry);
        }
        if (auto const & entry = status.macVtepMultiPathTable(filter.mac);
            !!entry && macVtepMultiPathIpFiltered(filter.vteps, entry)) {
            multiPath(entry);
        }
        if (auto const list = status.macVtepFloodListTable(filter.mac);
            list && macVtepFloodListIpFiltered(filter.vteps, *list)) {
            floodList(*list);
        }
        return;
    }
    forEachSorted(
        status.macVtepTable(), &MacVtepV2::macAddr, poll,
        [&](MacVtepV2 const & entry) {
            return (Target::walkTakesDefaultEntries || entry != MacVtepV2()) &&
                   macVtepIpFiltered(filter.vteps, entry);
        },
        unicast);
    forEachSorted(
        status.macVtepMultiPathTable(), &MacVtepMultiPathV2::macAddr, poll,
        [&](MacVtepMultiPathV2 const & entry) {
            return (Target::walkTakesDefaultEntries || !!entry) &&
                   macVtepMultiPathIpFiltered(filter.vteps, entry);
        },
        multiPath);
    forEachSorted(
        status.macVtepFloodListTable(), &MacVtepFloodListV2::macAddr, poll,
        [&](MacVtepFloodListV2 const & entry) {
            bool const yields = Target::floodListYieldsToMultipath &&
                                !!status.macVtepMultiPathTable(entry.macAddr());
            return !yields && macVtepFloodListIpFiltered(filter.vteps, entry);
        },
        floodList);
}

/// Copies the entry that `mac` has in one of the tables. One that is absent is copied as the
/// default value that the look-up yields; an absent flood list is not copied.
template <class Target>
void copyMacVtep(VniTables const & status, Vxlan::Vni vni, Target & target,
                 Nolt::EthAddr const & mac) {
    insertMacVtep(status.macVtepTable(mac), target.vniStatus(vni));
}

template <class Target>
void copyMultiPath(VniTables const & status, Vxlan::Vni vni, Target & target,
                   Nolt::EthAddr const & mac) {
    InterruptPoll poll;
    insertMultiPath(mac, status.macVtepMultiPathTable(mac), target.vniStatus(vni), poll);
}

template <class Target>
void copyFloodList(VniTables const & status, Vxlan::Vni vni, Target & target,
                   Nolt::EthAddr const & mac) {
    InterruptPoll poll;
    if (auto const list = status.macVtepFloodListTable(mac)) {
        insertFloodList(*list, target.vniStatus(vni), poll);
    }
}

} // namespace VxlanController::Cli
