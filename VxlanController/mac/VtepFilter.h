#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/VniTables.h"

namespace VxlanController::Cli {

/// The VTEP filter of a MAC listing. A null or empty list means no limit and lets every VTEP
/// through, whereas a list whose entries are all false lets none through.
///
/// None of these functions allocates.

/// True if `list` lets the VTEP through.
bool vtepIpFiltered(Vex::Ptr<VtepList const> const & list, Nolt::IpAddr vtep);

/// True if `list` lets the VTEP of the entry through.
bool macVtepIpFiltered(Vex::Ptr<VtepList const> const & list, MacVtepV2 const & entry);

/// True if `list` lets at least one VTEP of the entry through; the entry is then shown with all
/// of its VTEPs.
bool macVtepMultiPathIpFiltered(Vex::Ptr<VtepList const> const & list,
                                MacVtepMultiPathV2 const & entry);
bool macVtepFloodListIpFiltered(Vex::Ptr<VtepList const> const & list,
                                MacVtepFloodListV2 const & entry);

/// The same of the entry that `mac` has in a table of `status`. Without an entry, the VTEP of a
/// MAC is 0.0.0.0, and the VTEPs of a multipath entry or a flood list are none.
bool macVtepIpFiltered(Vex::Ptr<VtepList const> const & list, Nolt::EthAddr const & mac,
                       Vex::Ptr<VniTables const> const & status);
bool macVtepMultiPathIpFiltered(Vex::Ptr<VtepList const> const & list, Nolt::EthAddr const & mac,
                                Vex::Ptr<VniTables const> const & status);
bool macVtepFloodListIpFiltered(Vex::Ptr<VtepList const> const & list, Nolt::EthAddr const & mac,
                                Vex::Ptr<VniTables const> const & status);

} // namespace VxlanController::Cli
