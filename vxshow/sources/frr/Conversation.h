#pragma once

#include "vxshow/sources/Failure.h"
#include "vxshow/sources/frr/Documents.h"
#include "vxshow/system/FileBytes.h"

#include <functional>
#include <string>
#include <vector>

namespace vxshow::sources::frr {

/// Runs commands in one `vtysh`, and gives what it prints. Raises `Failure`.
using RunVtysh = std::function<system::FileBytes(std::vector<std::string> const & commands)>;

/// How often zebra is asked at most until its answers fit together.
inline constexpr unsigned maxAttempts = 3;

/// Asks for what is selected: in one run, or in two when the answers of the first leave
/// something open; of some thousand commands, 64 KiB in each run. Asks again while they do not fit
/// together and there is time, for `run` and until `deadline`, and takes the last answer then as
/// it is. Raises `Failure`.
Answer converse(RunVtysh const & run, VtepSource const & source, state::Selection const & selection,
                Deadline const & deadline = Deadline::never());

} // namespace vxshow::sources::frr
