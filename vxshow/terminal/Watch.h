#pragma once

#include "vxshow/cli/CommandLine.h"

namespace vxshow::terminal {

/// Reads the state and shows the command's answer again and again, with the seconds that were
/// asked for between, until the process is interrupted.
///
/// On a terminal it is drawn in place: a line that tells what it is and when it was read, the
/// remarks on the sources, and as much of the answer as there is room for, without the bytes
/// that a terminal obeys. Elsewhere each answer follows the last, whole and byte for byte, and
/// the remarks go to standard error.
///
/// Where a source fails it is shown as it was at its last good reading; where nothing can be
/// shown the last good answer stays. Either is said. The first reading alone ends the process
/// when there is nothing to show.
[[noreturn]] void watch(cli::CommandLine const & line);

} // namespace vxshow::terminal
