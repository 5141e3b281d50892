#include "vxshow/cli/command/Collections.h"
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

    void build(state::Mount const & mount) {
        command = Cli::vcsLRRouteFactory(mount.routers.lRStatusDir, router.name, prefix);
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
