#include "vxshow/cli/MountState.h"

#include "Vex/Errors.h"
#include "vxshow/cli/Version.h"
#include "vxshow/sources/fabric/FabricFile.h"
#include "vxshow/sources/fabric/LiveState.h"
#include "vxshow/sources/frr/FrrKind.h"
#include "vxshow/sources/ovsdb/OvsdbKind.h"
#include "vxshow/state/StateCounts.h"
#include "vxshow/state/snapshot/Snapshot.h"
#include "vxshow/state/tables/TableFiles.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace vxshow::cli {

namespace {

/// A snapshot that was made while a source failed lacks it, or has an earlier state of it.
state::Reading readingOf(state::Mount mount) {
    state::Reading reading{std::move(mount)};
    if (!reading.mount.origin) {
        return reading;
    }
    auto const & origin = *reading.mount.origin;
    for (state::SourceOrigin const & source : origin.sources) {
        if (!source.failure.empty()) {
            reading.complete = false;
            reading.remarks.push_back(Vex::printable(source.name) + ": " +
                                      Vex::printable(source.failure) + ", when the snapshot was " +
                                      "made, " + origin.made.stringValue());
        }
    }
    return reading;
}

state::StateReader snapshotReader(std::string const & path, std::size_t maxSize) {
    return [path, maxSize](state::Selection const & selection, state::WatchProgress const &) {
        try {
            return readingOf(state::snapshot::readSnapshot(path, selection, maxSize));
        } catch (std::exception const & error) {
            throw state::StateError(error.what());
        }
    };
}

/// The service that shares the tables writes them at any time: what was read is as of now.
state::Origin originOfTables(std::string const & directory, state::Mount const & mount) {
    auto const now = system::UtcTime::now();
    state::SourceOrigin source{Vex::printable(directory), "tables", state::Role::evpn, now};
    auto const entries = [](std::uint64_t count) {
        constexpr std::uint64_t most = std::numeric_limits<Vex::U32>::max();
        return static_cast<Vex::U32>(std::min(count, most));
    };
    for (auto const & part : state::countsOf(mount).tables) {
        auto & macs = part.side == "received" ? source.counts.remoteMacs : source.counts.localMacs;
        macs = entries(part.macs);
        source.counts.floods = entries(source.counts.floods + part.floods);
        source.counts.vnis = std::max(source.counts.vnis, entries(part.vnis));
    }
    return {now, version, {source}};
}

state::StateReader tablesReader(std::string const & directory) {
    return [directory](state::Selection const &, state::WatchProgress const &) {
        try {
            state::Reading reading{state::tables::mountTables(directory)};
            reading.mount.origin = originOfTables(directory, reading.mount);
            return reading;
        } catch (std::exception const & error) {
            throw state::StateError(error.what());
        }
    };
}

/// The sources that `--ovsdb` and `--frr` name. The command line has checked the remotes.
std::vector<sources::Source> namedSources(StateOptions const & options) {
    std::vector<sources::Source> named;
    for (std::string const & remotes : options.databases) {
        named.push_back(sources::ovsdb::sourceAt(remotes));
    }
    if (options.frr) {
        named.push_back(sources::frr::localSource());
    }
    for (sources::Source & source : named) {
        source.maxFacts = options.maxFacts;
        source.timeLimit = options.timeLimit.value_or(source.timeLimit);
        source.timeLimitSetBy = timeLimitOption;
    }
    return named;
}

sources::fabric::Fabric fabricOf(StateOptions const & options) {
    if (options.fabricPath.empty()) {
        return {namedSources(options)};
    }
    try {
        auto fabric = sources::fabric::readFabricFile(options.fabricPath, options.maxFacts);
        if (options.timeLimit) {
            fabric.timeLimit = options.timeLimit;
            fabric.timeLimitSetBy = timeLimitOption;
        }
        return fabric;
    } catch (sources::fabric::FabricFileError const & error) {
        throw state::StateError(error.what());
    }
}

} // namespace

state::StateReader stateReader(StateOptions const & options, state::Keep keep) {
    if (!options.snapshotPath.empty()) {
        return snapshotReader(options.snapshotPath, options.maxSize);
    }
    if (!options.tablesPath.empty()) {
        return tablesReader(options.tablesPath);
    }
    auto const state =
        std::make_shared<sources::fabric::LiveState>(fabricOf(options), options.allOrNothing, keep);
    return [state](state::Selection const & selection, state::WatchProgress const & watch) {
        try {
            auto reading = state->read(selection, watch);
            reading.mount.origin->version = version;
            return reading;
        } catch (state::StateError const &) {
            throw;
        } catch (std::exception const & error) {
            throw state::StateError(Vex::printable(error.what()));
        }
    };
}

} // namespace vxshow::cli
