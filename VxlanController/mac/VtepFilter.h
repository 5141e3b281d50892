#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "state/MacVtepFloodListV2.h"
#include "state/MacVtepMultiPathV2.h"
#include "state/MacVtepV2.h"

namespace VxlanController::Cli {

/// True if `list` lets the VTEP through. A null or empty list means no limit and lets every
/// VTEP through, whereas a list whose entries are all false lets none through.
///
/// None of these functions allocates.
bool vtepIpFiltered(VtepList const * list, Nolt::IpAddr vtep);

/// True if `list` lets the VTEP of the entry through.
bool macVtepIpFiltered(VtepList const * list, MacVtepV2 const & entry);

/// True if `list` lets at least one VTEP of the entry through; the entry is then shown with all
/// of its VTEPs.
bool macVtepMultiPathIpFiltered(VtepList const * list, MacVtepMultiPathV2 const & entry);
bool macVtepFloodListIpFiltered(VtepList const * list, MacVtepFloodListV2 const & entry);

} // namespace VxlanController::Cli
