#include "vxshow/cli/command/AddCommand.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/Filters.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct RouterRoutes {
    RouterFilter router;
    Nolt::IpGenPrefix prefix;
    Vex::Ptr<Cli::VcsLRRoute> command;

    void addFilters(CLI::App & options) {
        router.addTo(options);
        addPrefixFilter(options, prefix);
    }

    state::Selection selection() const { return selectsRouters(); }

    void render(state::Mount const & mount, int fd, Output const & output) {
        command = Cli::vcsLRRouteFactory(mount.routers.lRStatusDir, router.name, prefix);
        renderOn(fd, output, *command);
    }
};

} // namespace

void addRouterRoutes(CLI::App & router, CommandLine & chosen) {
    addCommand<RouterRoutes>(router, "routes", "The routes of logical routers and their nexthops",
                             chosen);
}

} // namespace vxshow::cli::command
