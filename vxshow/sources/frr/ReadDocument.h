#pragma once

#include "vxshow/sources/frr/Collector.h"
#include "vxshow/system/FileBytes.h"

namespace vxshow::sources::frr {

/// An answer is an object or a list, but not as any known version of zebra writes it.
class UnknownShape : public AnswerError {
public:
    using AnswerError::AnswerError;
};

/// Reads the answer to a question into `join`. An empty answer, object or list, or null, says that
/// there is nothing; for VNIs, an empty answer or object says that EVPN is not active. Raises
/// `AnswerError`, which names the command.
void readDocument(Question const & question, system::PaddedText document, Collector & join);

} // namespace vxshow::sources::frr
