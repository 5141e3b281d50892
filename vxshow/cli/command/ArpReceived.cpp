#include "VxlanController/arp/Collect.h"
#include "vxshow/cli/command/Collections.h"
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

    void build(state::Mount const & mount, Output const & output) {
        command = Cli::arpReceivedFactory(mount.received.switches, output.vniDotted, typed.vni,
                                          typed.mac, typed.ip, switchName);
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        build(mount, output);
        renderOn(fd, output, *command);
    }

    Vex::AnyValues collect(state::Mount const & mount, Output const & output) {
        build(mount, output);
        auto const tables = Cli::vxlanVtepSetFactory();
        Cli::collectArp(*command, *tables);
        return {command, tables};
    }
};

} // namespace

void addArpReceived(CLI::App & arp, CommandLine & chosen) {
    addCommand<ArpReceived>(arp, "received", "The ARP tables received from switches", chosen);
}

Collection collectArpReceived(CLI::App & options) {
    return addCollection<ArpReceived>(options);
}

} // namespace vxshow::cli::command
