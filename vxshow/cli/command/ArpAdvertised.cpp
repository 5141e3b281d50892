#include "VxlanController/arp/Collect.h"
#include "vxshow/cli/command/Collections.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/Disagreement.h"
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

    void build(state::Mount const & mount, Output const & output) {
        command = Cli::arpAdvertisedFactory(mount.advertised.vnis, output.vniDotted, typed.vni,
                                            typed.mac, typed.ip);
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        build(mount, output);
        namingFaultyEntries(mount, [&] { renderOn(fd, output, *command); });
    }

    Vex::AnyValues collect(state::Mount const & mount, Output const & output) {
        build(mount, output);
        auto const tables = Cli::vxlanFdbSetFactory();
        namingFaultyEntries(mount, [&] { Cli::collectArp(*command, *tables); });
        return {command, tables};
    }

    template <class Render>
    void namingFaultyEntries(state::Mount const & mount, Render && render) {
        auto const & vnis = mount.advertised.vnis;
        renderNamingDisagreement(vnis, Cli::arpFilterOf(*command), [&] {
            renderNamingInvalidEntry(vnis, NoNumber::isAnError, render);
        });
    }
};

} // namespace

void addArpAdvertised(CLI::App & arp, CommandLine & chosen) {
    addCommand<ArpAdvertised>(arp, "advertised", "The ARP tables advertised to switches", chosen);
}

Collection collectArpAdvertised(CLI::App & options) {
    return addCollection<ArpAdvertised>(options);
}

} // namespace vxshow::cli::command
