#pragma once

#include "vxshow/sources/Answer.h"
#include "vxshow/state/Origin.h"

namespace vxshow::sources::fabric {

/// How much an answer comes to.
state::SourceCounts countsOf(Answer const & answer);

} // namespace vxshow::sources::fabric
