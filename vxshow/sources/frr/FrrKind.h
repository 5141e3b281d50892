#pragma once

#include "vxshow/sources/Kind.h"
#include "vxshow/sources/Source.h"

namespace vxshow::sources::frr {

/// "frr": VTEPs that run FRR, which `vtysh` reads.
sources::Kind kind();

/// The source that `--frr` names: this machine's FRR, as the switch "frr".
Source localSource();

} // namespace vxshow::sources::frr
