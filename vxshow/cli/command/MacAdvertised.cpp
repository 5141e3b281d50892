#include "vxshow/cli/command/Collections.h"
#include "vxshow/cli/command/Commands.h"
#include "vxshow/cli/command/EntryNames.h"
#include "vxshow/cli/command/Filters.h"

namespace vxshow::cli::command {

namespace {

namespace Cli = VxlanController::Cli;

struct MacAdvertised {
    MacFilters typed;
    Vex::Ptr<Cli::VcsVniAdvertised> command;

    void addFilters(CLI::App & options) {
        typed.addTo(options, "--dest",
                    "hsc, evpn: what that destination is told; any other name, as without one: "
                    "what the switches are told, which is the same for all of them");
    }

    state::Selection selection() const {
        return {.received = false,
                .routers = false,
                .arpTables = false,
                .vni = typed.vni,
                .mac = typed.mac};
    }

    void build(state::Mount const & mount, Output const & output) {
        auto const & state = mount.advertised;
        command =
            Cli::vcsVniAdvertisedFactory(state.vnis, state.sources, state.evpn, output.vniDotted,
                                         typed.vni, typed.mac, typed.name, typed.vteps);
    }

    void render(state::Mount const & mount, int fd, Output const & output) {
        build(mount, output);
        renderNamingInvalidEntry(mount.advertised.vnis, NoNumber::isZero,
                                 [&] { renderOn(fd, output, *command); });
    }

    Vex::AnyValues collect(state::Mount const & mount, Output const & output) {
        build(mount, output);
        renderNamingInvalidEntry(mount.advertised.vnis, NoNumber::isZero,
                                 [&] { command->initialize(); });
        return {command};
    }
};

} // namespace

void addMacAdvertised(CLI::App & mac, CommandLine & chosen) {
    addCommand<MacAdvertised>(
        mac, "advertised", "The MAC tables advertised to switches or another destination", chosen);
}

Collection collectMacAdvertised(CLI::App & options) {
    return addCollection<MacAdvertised>(options);
}

} // namespace vxshow::cli::command
