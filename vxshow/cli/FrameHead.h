#pragma once

#include "vxshow/state/Origin.h"

#include <optional>
#include <string>

namespace vxshow::cli {

/// The line before each JSON document of `--watch`: an object with the member "frame", which has
/// "time", when the state was read; of live sources "stale", the names of those that are shown as
/// they were before, and "failed", of those that are not shown; and "failure", why the state could
/// not be read again, if it could not.
std::string frameHead(system::UtcTime time, std::optional<state::Origin> const & origin,
                      std::string const & failure);

} // namespace vxshow::cli
