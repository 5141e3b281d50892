#include "vxshow/cli/command/Collections.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/Filters.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct MacReceived {
    MacFilters typed;
    Vex::Ptr<Cli::VcsVniReceived> command;

    void addFilters(CLI::App & options) {
        typed.addTo(options, "--source",
                    "Only this switch by name; all: every switch; hsc, qvx, evpn: that source");
    }

    state::Selection selection() const {
        return {.advertised = false,
                .routers = false,
                .arpTables = false,
                .vni = typed.vni,
                .mac = typed.mac,
                .source = typed.name};
    }

    void build(state::Mount const & mount, Output const & output) {
        auto const & state = mount.received;
        command =
            Cli::vcsVniReceivedFactory(state.switches, state.sources, state.evpn, output.vniDotted,
                                       typed.vni, typed.mac, typed.name, typed.vteps);
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

void addMacReceived(CLI::App & mac, CommandLine & chosen) {
    addCommand<MacReceived>(mac, "received",
                            "The MAC tables received from switches and other sources", chosen);
}

Collection collectMacReceived(CLI::App & options) {
    return addCollection<MacReceived>(options);
}

} // namespace vxshow::cli::command
