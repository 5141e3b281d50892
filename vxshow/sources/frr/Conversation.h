#pragma once

#include "vxshow/sources/Failure.h"
#include "vxshow/sources/frr/Documents.h"
#include "vxshow/system/FileBytes.h"

#include <functional>
#include <string>
#include <vector>

namespace vxshow::sources::frr {

/// Runs commands in one `vtysh`; returns what it prints. Raises `Failure`.
using RunVtysh = std::function<system::FileBytes(std::vector<std::string> const & commands)>;

/// The most times that zebra is asked until its answers are consistent.
inline constexpr unsigned maxAttempts = 3;

/// Asks for what is selected: in one run, or in two if the answers of the first leave questions
/// open; thousands of commands take more runs, with 64 KiB each. If the answers are inconsistent
/// and there is time left, asks again; returns the last answer as it is. Raises `Failure`.
Answer converse(RunVtysh const & run, VtepSource const & source, state::Selection const & selection,
                Deadline const & deadline = Deadline::never());

} // namespace vxshow::sources::frr
