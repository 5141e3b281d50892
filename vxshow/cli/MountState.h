#pragma once

#include "vxshow/cli/StateOptions.h"
#include "vxshow/state/StateReader.h"

namespace vxshow::cli {

/// The reader of the state that the options name: a snapshot, a directory of tables, a fabric,
/// or the sources named one by one. A fabric file is read here, and once. Raises `StateError` if
/// that cannot be read.
state::StateReader stateReader(StateOptions const & options, state::Keep keep);

} // namespace vxshow::cli
