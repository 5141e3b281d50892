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

struct RouterDetail {
    filter::NameFilter routers;
    Vex::Ptr<Cli::VcsLR> command;

    void addFilters(CLI::App & options) { addRouterFilter(options, routers); }

    state::Selection selection() const { return selectsRouters(); }

    std::vector<std::string> unknown(state::Reading const & state) const {
        return unknownRouters(routers, state);
    }

    void build(state::Mount const & mount, Output const & output) {
        auto const & state = mount.routers;
        command =
            Cli::vcsLRFactory(state.publishStatus, state.switchInfoDir,
                              state::narrow::narrowedRouterStatus(state.lRStatusDir, routers.many),
                              output.vniDotted, routers.one);
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        build(mount, output);
        renderOn(fd, output, *command);
    }

    Vex::AnyValues collect(state::Mount const & mount, Output const & output) {
        build(mount, output);
        command->initialize();
        return {command};
    }

    static listing::Tables tables() { return listing::routerDetailTables; }

    void walkTable(state::Mount const & /* mount */, std::size_t table,
                   listing::RowSink & sink) const {
        listing::walk(*command, table, sink);
    }

    std::size_t cutAddresses() const { return listing::cutAddresses(*command); }
};

} // namespace

void addRouterDetail(CLI::App & router, CommandLine & chosen) {
    addCommand<RouterDetail>(router, "detail", "The IP ports and uplink ports of logical routers",
                             chosen);
}

Collection collectRouterDetail(CLI::App & options) {
    return addCollection<RouterDetail>(options);
}

} // namespace vxshow::cli::command
