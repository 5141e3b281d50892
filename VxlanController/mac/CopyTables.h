#pragma once

#include "VxlanController/command/ForEachSorted.h"
#include "VxlanController/mac/VtepFilter.h"
#include "state/VniTables.h"

namespace VxlanController::Cli {

/// What a listing of MAC tables is limited to.
struct MacTableFilter {
    Nolt::EthAddr mac; ///< the zero address: every MAC
    VtepList const & vteps;
};

/// The model's form of one published entry. Every copied VTEP counts as a member of its
/// set, whatever flag the state holds with it.
void copyMacVtep(MacVtepV2 const & entry, VniStatus & into);
void copyMultiPath(MacVtepMultiPathV2 const & entry, VniStatus & into, InterruptPoll & poll);
void copyFloodList(MacVtepFloodListV2 const & entry, VniStatus & into, InterruptPoll & poll);

/// Copies what `filter` selects of the three MAC tables of one VNI: for one MAC by three
/// look-ups, else by walking each table. A MAC that several tables hold is copied from
/// each of them, but for the flood list that a walk leaves out where the target says so.
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
