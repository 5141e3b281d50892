#include "vxshow/cli/command/Collections.h"
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

    void build(state::Mount const & mount, Output const & output) {
        auto const & state = mount.routers;
        command = Cli::vcsLRFactory(state.publishStatus, state.switchInfoDir, state.lRStatusDir,
                                    output.vniDotted, router.name);
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
