#include "vxshow/cli/command/AddCommand.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/Filters.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct ArpReceived {
    ArpFilters typed;
    std::string switchName;
    Vex::Ptr<Cli::ArpReceived> command;

    void addFilters(CLI::App & options) {
        typed.addTo(options);
        options.add_option("--switch", switchName, "Only this switch by name")->type_name("NAME");
    }

    state::Selection selection() const {
        return {.advertised = false,
                .routers = false,
                .macTables = false,
                .vni = typed.vni,
                .source = switchName};
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        command = Cli::arpReceivedFactory(mount.received.switches, output.vniDotted, typed.vni,
                                          typed.mac, typed.ip, switchName);
        renderOn(fd, output, *command);
    }
};

} // namespace

void addArpReceived(CLI::App & arp, CommandLine & chosen) {
    addCommand<ArpReceived>(arp, "received", "The ARP tables received from switches", chosen);
}

} // namespace vxshow::cli::command
