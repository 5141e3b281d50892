#pragma once

#include <CLI/App.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vxshow::cli {

/// Where the state comes from, as it was typed or stands in the environment. One of the first
/// three, or the last two together.
struct StateOptions {
    std::string snapshotPath;           ///< "-" for standard input
    std::string fabricPath;             ///< "-" for standard input
    std::vector<std::string> databases; ///< the remotes of each
    bool frr = false;

    bool allOrNothing = false;            ///< whether a source that fails leaves nothing to show
    std::optional<unsigned> watchSeconds; ///< so often it is read and shown again
};

/// Adds the options. `options` outlives the reading of the command line.
void addStateOptions(CLI::App & app, StateOptions & options);

/// Completes what was typed from the environment: VXSHOW_STATE and VXSHOW_FABRIC stand in for
/// --state and --fabric when no option says where the state is. Gives the line that refuses the
/// result, if it tells of no state or of several.
std::optional<std::string> completeStateOptions(StateOptions & options);

} // namespace vxshow::cli
