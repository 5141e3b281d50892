#pragma once

#include "tests/unit/vxshow/Process.h"

#include <string>
#include <vector>

/// Runs `vxshow` from start to end with a terminal of that many columns as its standard output.
/// `out` is what it wrote there; the terminal adds a CR before each LF. It must be short: the
/// terminal is read only at the end.
Finished vxshowOnTerminal(std::vector<std::string> const & arguments, unsigned short columns = 200);
