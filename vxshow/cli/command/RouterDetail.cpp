#include "vxshow/cli/command/AddCommand.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/Filters.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct RouterDetail {
    RouterFilter router;
    Vex::Ptr<Cli::VcsLR> command;

    void addFilters(CLI::App & options) { router.addTo(options); }

    state::Selection selection() const { return selectsRouters(); }

    void render(state::Mount const & mount, int fd, Output const & output) {
        auto const & state = mount.routers;
        command = Cli::vcsLRFactory(state.publishStatus, state.switchInfoDir, state.lRStatusDir,
                                    output.vniDotted, router.name);
        renderOn(fd, output, *command);
    }
};

} // namespace

void addRouterDetail(CLI::App & router, CommandLine & chosen) {
    addCommand<RouterDetail>(router, "detail", "The IP ports and uplink ports of logical routers",
                             chosen);
}

} // namespace vxshow::cli::command
