#include "vxshow/cli/MountState.h"

#include "Vex/Errors.h"
#include "vxshow/sources/fabric/FabricFile.h"
#include "vxshow/sources/fabric/LiveState.h"
#include "vxshow/sources/frr/FrrKind.h"
#include "vxshow/sources/ovsdb/OvsdbKind.h"
#include "vxshow/state/snapshot/Snapshot.h"
#include "vxshow/state/tables/TableFiles.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace vxshow::cli {

namespace {

state::StateReader snapshotReader(std::string const & path, std::size_t maxSize) {
    return [path, maxSize](state::Selection const & selection, state::WatchProgress const &) {
        try {
            return state::Reading{state::snapshot::readSnapshot(path, selection, maxSize)};
        } catch (std::exception const & error) {
            throw state::StateError(error.what());
        }
    };
}

state::StateReader tablesReader(std::string const & directory) {
    return [directory](state::Selection const &, state::WatchProgress const &) {
        try {
            return state::Reading{state::tables::mountTables(directory)};
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
    }
    return named;
}

sources::fabric::Fabric fabricOf(StateOptions const & options) {
    if (options.fabricPath.empty()) {
        return {namedSources(options), options.timeLimit};
    }
    try {
        auto fabric = sources::fabric::readFabricFile(options.fabricPath, options.maxFacts);
        fabric.timeLimit = options.timeLimit ? options.timeLimit : fabric.timeLimit;
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
            return state->read(selection, watch);
        } catch (state::StateError const &) {
            throw;
        } catch (std::exception const & error) {
            throw state::StateError(Vex::printable(error.what()));
        }
    };
}

} // namespace vxshow::cli
