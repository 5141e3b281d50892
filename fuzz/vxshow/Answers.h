#pragma once

#include "vxshow/sources/Answer.h"

namespace fuzz {

/// Checks an answer of a live source: its facts are settled, its warning is one line, and the mount
/// of them, in each role, can be written as a snapshot and read back.
void checkAnswer(vxshow::sources::Answer const & answer);

} // namespace fuzz
