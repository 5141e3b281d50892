#include "vxshow/cli/command/AddCommand.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/EntryNames.h"
#include "vxshow/cli/command/Filters.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct ArpAdvertised {
    ArpFilters typed;
    Vex::Ptr<Cli::ArpAdvertised> command;

    void addFilters(CLI::App & options) { typed.addTo(options); }

    state::Selection selection() const {
        return {.received = false, .routers = false, .macTables = false, .vni = typed.vni};
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        auto const & entries = mount.advertised.vnis;
        command =
            Cli::arpAdvertisedFactory(entries, output.vniDotted, typed.vni, typed.mac, typed.ip);
        renderNamingInvalidEntry(entries, NoNumber::isAnError,
                                 [&] { renderOn(fd, output, *command); });
    }
};

} // namespace

void addArpAdvertised(CLI::App & arp, CommandLine & chosen) {
    addCommand<ArpAdvertised>(arp, "advertised", "The ARP tables advertised to switches", chosen);
}

} // namespace vxshow::cli::command
