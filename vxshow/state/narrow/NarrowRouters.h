#pragma once

#include "Nolt/IpGenAddr.h"
#include "vxshow/state/Mount.h"
#include "vxshow/state/narrow/Intervals.h"
#include "vxshow/state/narrow/NamePatterns.h"

#include <set>
#include <string>

/// Narrows what is known about logical routers, as `NarrowTables.h` does for tables.
namespace vxshow::state::narrow {

/// `Mount::Routers::lRStatusDir` with the routers in `names` only, or all of them if that is empty;
/// null stays null.
Vex::Ptr<Vex::Dir> narrowedRouterStatus(Vex::Ptr<Vex::Dir> const & status,
                                        NamePatterns const & names);

/// `Mount::Routers::lRStatusDir` with the routes that overlap `prefixes` only, and nothing else of
/// the routers; null stays null.
Vex::Ptr<Vex::Dir> narrowedRoutes(Vex::Ptr<Vex::Dir> const & status,
                                  Intervals<Nolt::IpGenAddr> const & prefixes);

/// `Mount::Routers::publishStatus` without the paths of routers that are not in `names`; null
/// stays null.
Vex::Ptr<Statestore::PublishStatus>
narrowedPublished(Vex::Ptr<Statestore::PublishStatus> const & published,
                  NamePatterns const & names);

/// `Mount::Routers::switchInfoDir` with the switches of these identifiers only, and all VTEPs; null
/// stays null.
Vex::Ptr<VxlanController::SwitchInfoDir>
narrowedSwitchInfo(Vex::Ptr<VxlanController::SwitchInfoDir> const & switches,
                   std::set<std::string> const & identifiers);

} // namespace vxshow::state::narrow
