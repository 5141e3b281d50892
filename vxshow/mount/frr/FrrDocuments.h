#pragma once

#include "vxshow/file/FileBytes.h"
#include "vxshow/mount/frr/FrrJoin.h"

namespace vxshow {

/// Takes the answer to a question into `join`. No text at all, and an empty object or list, is
/// the answer that there is nothing; of VNIs, no text at all is the answer that EVPN is not in
/// force. Raises `AnswerError`, which names the command.
void readFrrDocument(FrrQuestion const & question, PaddedText document, FrrJoin & join);

} // namespace vxshow
