#pragma once

#include "vxshow/cli/filter/NameFilter.h"
#include "vxshow/state/StateReader.h"
#include "vxshow/state/narrow/NamePatterns.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Names in filters that the state does not have: more likely misspelt than meant, so they are
/// reported. A value of any other kind that matches nothing is not.
namespace vxshow::cli::command {

using NameSet = state::narrow::NamePatterns::Names;

/// What was asked for, and what the state has.
struct AskedNames {
    std::string_view option; ///< "--source"
    std::string_view kind;   ///< what has the name: "source"
    state::narrow::NamePatterns const & asked;
    NameSet const & known;
    /// Words that are accepted as well, for suggestions.
    std::vector<std::string_view> words = {};
};

/// A line for each name or pattern that nothing in the state has, each with the most similar name
/// if there is one and what was typed is not a MAC address: `--source: no source is named "LEAF3";
/// did you mean leaf3?`. If the state is not complete, the line is only about the sources that
/// answered, and suggests nothing, since one that failed can have the name. Printable ASCII.
std::vector<std::string> unknownNames(AskedNames const & names, bool complete);

/// The names of the switches from which something is received.
NameSet switchNames(state::Mount const & mount);

/// The names of the logical routers that have ports or routes, or that a switch publishes.
NameSet routerNames(state::Mount const & mount);

/// The lines about `--router`.
std::vector<std::string> unknownRouters(filter::NameFilter const & routers,
                                        state::Reading const & state);

} // namespace vxshow::cli::command
