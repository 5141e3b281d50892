#pragma once

#include "VxlanController/command/InterruptPoll.h"
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
void copyMultiPath(MacVtepMultiPathV2 const & entry, VniStatus & into);
void copyFloodList(MacVtepFloodListV2 const & entry, VniStatus & into);

/// Copies what `filter` selects of the three MAC tables of one VNI: for one MAC by three
/// look-ups, else by walking each table. A MAC that several tables hold is copied from
/// each of them.
template <class Target>
void copyTables(VniTables const & status, Vxlan::Vni vni, Target & target,
                MacTableFilter const & filter) {
    InterruptPoll poll;
    auto const unicast = [&](MacVtepV2 const & entry) {
        poll.step();
        if (entry != MacVtepV2() && macVtepIpFiltered(filter.vteps, entry)) {
            copyMacVtep(entry, target.vniStatus(vni));
        }
    };
    auto const multiPath = [&](MacVtepMultiPathV2 const & entry) {
        poll.step();
        if (!!entry && macVtepMultiPathIpFiltered(filter.vteps, entry)) {
            copyMultiPath(entry, target.vniStatus(vni));
        }
    };
    auto const floodList = [&](MacVtepFloodListV2 const & entry) {
        poll.step();
        if (macVtepFloodListIpFiltered(filter.vteps, entry)) {
            copyFloodList(entry, target.vniStatus(vni));
        }
    };

    if (!filter.mac.isZero()) {
        unicast(status.macVtepTable(filter.mac));
        multiPath(status.macVtepMultiPathTable(filter.mac));
        if (auto const list = status.macVtepFloodListTable(filter.mac)) {
            floodList(*list);
        }
        return;
    }
    for (MacVtepV2 const & entry : status.macVtepTable()) {
        unicast(entry);
    }
    for (MacVtepMultiPathV2 const & entry : status.macVtepMultiPathTable()) {
        multiPath(entry);
    }
    for (MacVtepFloodListV2 const & entry : status.macVtepFloodListTable()) {
        floodList(entry);
    }
}

} // namespace VxlanController::Cli
