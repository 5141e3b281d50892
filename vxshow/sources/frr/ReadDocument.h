#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/system/FileBytes.h"

namespace vxshow::sources::frr {

/// Takes the answer to a question into `join`. No text at all, and an empty object or list, is
/// the answer that there is nothing; of VNIs, no text at all is the answer that EVPN is not in
/// force. Raises `AnswerError`, which names the command.
void readDocument(Question const & question, system::PaddedText document, Collector & join);

} // namespace vxshow::sources::frr
