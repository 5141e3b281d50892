#pragma once

#include "vxshow/sources/Answer.h"

namespace fuzz {

/// Checks an answer of a live source: its facts are settled, its warning is one line, the mount of
/// them, in each role, can be written as a snapshot and read back, and it does not matter whether
/// another source comes before or after.
void checkAnswer(vxshow::sources::Answer const & answer);

} // namespace fuzz
