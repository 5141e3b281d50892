#pragma once

#include "vxshow/sources/DeadlineWatch.h"
#include "vxshow/sources/Facts.h"
#include "vxshow/state/Mount.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vxshow::sources {

/// A switch with its name. Among all switches it is identified by its system identifier, or by
/// its name if that is not known. Nothing is published under a name, so such a switch is in no
/// map of routers.
using NamedSwitch = std::pair<std::string, SwitchFacts>;

/// The switches with their VTEPs, all of them active; what the switches publish; and the routers.
/// Throws `TimedOut` once the deadline of `watch` is over.
state::Mount::Routers mountRouters(std::vector<NamedSwitch> const & switches,
                                   std::map<std::string, RouterFacts> const & routers,
                                   DeadlineWatch & watch);

} // namespace vxshow::sources
