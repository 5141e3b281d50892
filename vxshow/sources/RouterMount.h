#pragma once

#include "vxshow/sources/Facts.h"
#include "vxshow/state/Mount.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vxshow::sources {

/// A switch with the identifier under which it stands among all switches: that of its system,
/// or its name where no system identifier is known. Nothing is published under a name, so
/// such a switch is in no map of routers.
using NamedSwitch = std::pair<std::string, SwitchFacts>;

/// Which switch has which VTEPs, all of them in service; what they publish; and the routers.
state::Mount::Routers mountRouters(std::vector<NamedSwitch> const & switches,
                                   std::map<std::string, RouterFacts> const & routers);

} // namespace vxshow::sources
