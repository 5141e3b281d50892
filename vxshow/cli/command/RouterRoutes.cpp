#include "vxshow/cli/command/Collections.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/Filters.h"
#include "vxshow/cli/command/UnknownNames.h"
#include "vxshow/listing/CutAddresses.h"
#include "vxshow/listing/RouterRows.h"
#include "vxshow/state/narrow/NarrowRouters.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct RouterRoutes {
    filter::NameFilter routers;
    filter::PrefixFilter prefixes;
    Vex::Ptr<Cli::VcsLRRoute> command;

    void addFilters(CLI::App & options) {
        addRouterFilter(options, routers);
        addPrefixFilter(options, prefixes);
    }

    state::Selection selection() const { return selectsRouters(); }

    std::vector<std::string> unknown(state::Reading const & state) const {
        return unknownRouters(routers, state);
    }

    void build(state::Mount const & mount) {
        auto status = state::narrow::narrowedRouterStatus(mount.routers.lRStatusDir, routers.many);
        if (!prefixes.many.empty()) {
            status = state::narrow::narrowedRoutes(status, prefixes.many);
        }
        command = Cli::vcsLRRouteFactory(status, routers.one, prefixes.one);
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        build(mount);
        renderOn(fd, output, *command);
    }

    Vex::AnyValues collect(state::Mount const & mount, Output const & /* output */) {
        build(mount);
        command->initialize();
        return {command};
    }

    static listing::Tables tables() { return listing::routerRoutesTables; }

    void walkTable(state::Mount const & /* mount */, std::size_t table,
                   listing::RowSink & sink) const {
        listing::walk(*command, table, sink);
    }

    std::size_t cutAddresses() const { return listing::cutAddresses(*command); }
};

} // namespace

void addRouterRoutes(CLI::App & router, CommandLine & chosen) {
    addCommand<RouterRoutes>(router, "routes", "The routes of logical routers and their nexthops",
                             chosen);
}

Collection collectRouterRoutes(CLI::App & options) {
    return addCollection<RouterRoutes>(options);
}

} // namespace vxshow::cli::command
