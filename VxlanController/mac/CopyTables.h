#pragma once

#include "VxlanController/command/ForEachSorted.h"
#include "VxlanController/mac/VtepFilter.h"
#include "state/VniTables.h"

namespace VxlanController::Cli {

/// The filters of a listing of MAC tables.
struct MacTableFilter {
    Nolt::EthAddr mac;      ///< the zero address matches every MAC
    VtepList const * vteps; ///< null or empty: every VTEP
};

/// Copies one published entry into the model. Every VTEP becomes a member of its set,
/// whatever flag the state holds for it.
void copyMacVtep(MacVtepV2 const & entry, VniStatus & into);
void copyMultiPath(MacVtepMultiPathV2 const & entry, VniStatus & into, InterruptPoll & poll);
void copyFloodList(MacVtepFloodListV2 const & entry, VniStatus & into, InterruptPoll & poll);

/// Copies what `filter` selects from the three MAC tables of one VNI: a single MAC by three
/// look-ups, all MACs by walking each table. A MAC in several tables is copied from each of
/// them, except that a walk skips its flood list where `Target::floodListYieldsToMultipath`.
template <class Target>
void copyTables(VniTables const & status, Vxlan::Vni vni, Target & target,
                MacTableFilter const & filter) {
    InterruptPoll poll;
    auto const unicast = [&](MacVtepV2 const & entry) {
        copyMacVtep(entry, target.vniStatus(vni));
    };
    auto const multiPath = [&](MacVtepMultiPathV2 const & entry) {
        copyMultiPath(entry, target.vniStatus(vni), poll);
    };
    auto const floodList = [&](MacVtepFloodListV2 const & entry) {
        copyFloodList(entry, target.vniStatus(vni), poll);
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

} // namespace VxlanController::Cli
