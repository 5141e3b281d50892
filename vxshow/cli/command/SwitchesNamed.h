#pragma once

#include "vxshow/cli/filter/NameFilter.h"
#include "vxshow/state/Mount.h"
#include "vxshow/state/StateReader.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

/// The switches that `router map --switch` means.
namespace vxshow::cli::command {

/// The identifiers of the switches in `state` that the filter selects. Each value is an identifier
/// exactly as it is published; or else the same MAC address in another form; or else a name. A
/// pattern matches identifiers and names.
std::set<std::string> switchesNamed(filter::NameFilter const & switches,
                                    state::Mount::Routers const & state);

/// All identifiers of switches in `state`, and their names where it knows these.
std::set<std::string, std::less<>> switchIdentifiers(state::Mount::Routers const & state);

/// The lines about values that select no switch, as `unknownNames` gives them.
std::vector<std::string> unknownSwitches(filter::NameFilter const & switches,
                                         state::Reading const & state);

} // namespace vxshow::cli::command
