#include "vxshow/cli/StateOptions.h"

#include "vxshow/cli/NumberOption.h"
#include "vxshow/cli/SecondsOption.h"
#include "vxshow/cli/SizeOption.h"
#include "vxshow/config/ReadSettings.h"
#include "vxshow/sources/ovsdb/Remote.h"

#include <CLI/Option.hpp>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace vxshow::cli {

namespace {

constexpr unsigned oneDay = 86400;

/// A script with an empty variable passes an empty path; the environment must not replace it.
std::string checkPath(std::string const & text) {
    return text.empty() ? "'': expected the name of a file" : "";
}

std::string checkFabricName(std::string const & text) {
    return text.empty() ? "'': expected the name of a fabric" : "";
}

std::string checkDirectory(std::string const & text) {
    return text.empty() ? "'': expected the name of a directory" : "";
}

/// The first option that says where the state is, other than --tables and -F; null if none does.
char const * stateOption(StateOptions const & options) {
    return !options.snapshotPath.empty() ? "--state"
           : !options.fabricPath.empty() ? "--fabric"
           : !options.databases.empty()  ? "--ovsdb"
           : options.frr                 ? "--frr"
                                         : nullptr;
}

/// The line that refuses another source of state beside --tables.
std::optional<std::string> refuseBesideTables(StateOptions const & options) {
    char const * const other = stateOption(options);
    return other ? std::optional(std::string(other) + " and --tables: expected one of them")
                 : std::nullopt;
}

/// The line that refuses another source of state beside -F.
std::optional<std::string> refuseBesideName(StateOptions const & options) {
    char const * const other = options.tablesPath.empty() ? stateOption(options) : "--tables";
    return other ? std::optional(std::string(other) + " and -F: expected one of them")
                 : std::nullopt;
}

std::string checkRemotes(std::string const & text) {
    try {
        sources::ovsdb::readRemotes(text);
        return "";
    } catch (sources::ovsdb::RemoteError const & error) {
        return error.what();
    }
}

std::string environment(char const * name) {
    char const * const value = std::getenv(name);
    return value ? value : "";
}

} // namespace

void addStateOptions(CLI::App & app, StateOptions & options) {
    app.add_option("--state", options.snapshotPath,
                   "Snapshot to read; - is standard input (or VXSHOW_STATE)")
        ->type_name("FILE")
        ->check(checkPath, "");
    addSize(app, "--max-size",
            "Longest snapshot to read, in bytes or with K, M or G; default and maximum 4G",
            [&](std::uint64_t bytes) {
                options.maxSize = static_cast<std::size_t>(
                    std::min<std::uint64_t>(bytes, system::FileBytes::longest));
            });
    app.add_option("--fabric", options.fabricPath,
                   "Fabric file: the live sources to read; - is standard input (or VXSHOW_FABRIC)")
        ->type_name("FILE")
        ->check(checkPath, "");
    app.add_option(
           "-F,--fabric-name", options.fabricName,
           "Fabric of the configuration files to read, by name; 'vxshow fabrics' lists them")
        ->type_name("NAME")
        ->check(checkFabricName, "");
    app.add_option("--ovsdb", options.databases,
                   "Live hardware_vtep database to read: unix:FILE or tcp:HOST:PORT, with commas "
                   "between the servers of a cluster; can be given several times")
        ->type_name("REMOTE")
        ->check(checkRemotes, "")
        ->expected(1)
        ->take_all();
    app.add_flag("--frr", options.frr, "Read the live EVPN of this machine's FRR, through vtysh")
        ->disable_flag_override();
    app.add_option("--tables", options.tablesPath,
                   "Directory of EVPN tables to map, as 'tables publish' writes them")
        ->type_name("DIR")
        ->check(checkDirectory, "");
    addNumber(app, "--max-facts", 1, std::numeric_limits<Vex::U32>::max(),
              "The most facts, such as MAC addresses, that a live source can come to, unless the "
              "fabric file says otherwise; default 10000000",
              [&](Vex::U32 facts) { options.maxFacts = facts; });
    addSeconds(app, timeLimitOption,
               "The most time for reading all live sources, 0.001 to 3600 seconds; those that have "
               "not answered by then have failed. 5 for each source unless it is given, or the "
               "fabric file says otherwise",
               [&](std::chrono::milliseconds time) { options.timeLimit = time; });
    app.add_flag("--all-or-nothing", options.allOrNothing,
                 "Show nothing when a live source cannot be read")
        ->disable_flag_override();
    addNumber(app, "--watch", 1, oneDay,
              "Read and show again, N seconds after each time, until Ctrl-C",
              [&](Vex::U32 seconds) { options.watchSeconds = seconds; });
}

std::optional<std::string> completeStateOptions(StateOptions & options,
                                                config::Settings const & settings) {
    if (!options.fabricName.empty()) {
        if (auto line = refuseBesideName(options)) {
            return line;
        }
        auto const * const fabric = config::fabricNamed(settings, options.fabricName);
        if (!fabric) {
            return "-F: " + config::unknownFabric(settings, options.fabricName);
        }
        options.fabricPath = fabric->file;
        return std::nullopt;
    }
    if (!options.tablesPath.empty()) {
        return refuseBesideTables(options);
    }
    bool const sources = !options.databases.empty() || options.frr;
    if (options.snapshotPath.empty() && options.fabricPath.empty() && !sources) {
        options.snapshotPath = environment("VXSHOW_STATE");
        options.fabricPath = environment("VXSHOW_FABRIC");
        if (!options.snapshotPath.empty() && !options.fabricPath.empty()) {
            return "VXSHOW_STATE and VXSHOW_FABRIC: both are set; expected one of them, or an "
                   "option that says where the state is";
        }
        if (options.snapshotPath.empty() && options.fabricPath.empty()) {
            return "no state to show: give --state FILE, --fabric FILE, --ovsdb REMOTE, --frr or "
                   "--tables DIR, or set VXSHOW_STATE or VXSHOW_FABRIC";
        }
    }
    if (!options.snapshotPath.empty() && !options.fabricPath.empty()) {
        return "--state and --fabric: expected one of them";
    }
    if (sources && !(options.snapshotPath.empty() && options.fabricPath.empty())) {
        return std::string(options.snapshotPath.empty() ? "--fabric" : "--state") + " and " +
               (options.frr ? "--frr" : "--ovsdb") + ": expected one of them";
    }
    return std::nullopt;
}

} // namespace vxshow::cli
