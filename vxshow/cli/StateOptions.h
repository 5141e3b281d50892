#pragma once

#include "vxshow/config/Settings.h"
#include "vxshow/sources/FactBudget.h"
#include "vxshow/system/FileBytes.h"

#include <CLI/App.hpp>

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vxshow::cli {

inline constexpr char const * timeLimitOption = "--time-limit";

/// The long name of the option -F.
inline constexpr char const * fabricNameOption = "fabric-name";

/// Where the state comes from, as typed or as set in the environment: a snapshot, a fabric file, a
/// directory of tables, or any number of databases, with or without FRR.
struct StateOptions {
    std::string snapshotPath;           ///< "-" for standard input
    std::string fabricPath;             ///< "-" for standard input
    std::string fabricName;             ///< of a configured fabric
    std::string tablesPath;             ///< the directory of EVPN tables in files
    std::vector<std::string> databases; ///< the remotes of each database, as typed
    bool frr = false;                   ///< whether to read this machine's FRR

    /// The most facts of a live source, unless the fabric file says otherwise.
    std::size_t maxFacts = sources::defaultMaxFacts;
    /// The most time for reading all live sources, unless none is given.
    std::optional<std::chrono::milliseconds> timeLimit = {};
    std::size_t maxSize = system::FileBytes::longest; ///< of the snapshot, in bytes

    bool allOrNothing = false;            ///< whether to show nothing if any source fails
    std::optional<unsigned> watchSeconds; ///< the interval of --watch
};

/// Adds the options. `options` must outlive the parsing.
void addStateOptions(CLI::App & app, StateOptions & options);

/// Completes the options: `fabricName` becomes the path of the fabric file, and VXSHOW_STATE and
/// VXSHOW_FABRIC replace --state and
/// --fabric if no option says where the state is. Returns an error line if there is then no state,
/// or more than one.
std::optional<std::string> completeStateOptions(StateOptions & options,
                                                config::Settings const & settings);

} // namespace vxshow::cli
