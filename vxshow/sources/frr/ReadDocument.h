#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/system/FileBytes.h"

namespace vxshow::sources::frr {

/// Reads the answer to a question into `join`. An empty answer, object or list says that there is
/// nothing; for VNIs, an empty answer says that EVPN is not active. Raises `AnswerError`, which
/// names the command.
void readDocument(Question const & question, system::PaddedText document, Collector & join);

} // namespace vxshow::sources::frr
