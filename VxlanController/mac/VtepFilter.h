#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/MacVtepFloodListV2.h"
#include "state/MacVtepMultiPathV2.h"
#include "state/MacVtepV2.h"

namespace VxlanController::Cli {

/// Which VTEPs a listing is limited to. No entry at all means no limit, so a list whose
/// entries are all false shows nothing, and an empty one everything.
///
/// All tests take the list by reference to const; none of them allocates.
bool vtepIpFiltered(VtepList const & list, Nolt::IpAddr vtep);

/// True when the entry lies behind a VTEP that `list` lets through.
bool macVtepIpFiltered(VtepList const & list, MacVtepV2 const & entry);

/// True when `list` lets at least one of the entry's VTEPs through; the entry is then
/// shown with all of them.
bool macVtepMultiPathIpFiltered(VtepList const & list, MacVtepMultiPathV2 const & entry);
bool macVtepFloodListIpFiltered(VtepList const & list, MacVtepFloodListV2 const & entry);

} // namespace VxlanController::Cli
