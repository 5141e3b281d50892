#include "vxshow/FilterOptions.h"
#include "vxshow/command/AddCommand.h"
#include "vxshow/command/Commands.h"

namespace vxshow {

namespace {

namespace Cli = VxlanController::Cli;

struct MacReceived {
    Vxlan::VniOrNone vni;
    Nolt::EthAddr mac;
    std::string source;
    Vex::Ptr<Cli::VtepList> vteps = Cli::vtepListFactory();
    Vex::Ptr<Cli::VcsVniReceived> command;

    void addFilters(CLI::App & options) {
        addVniFilter(options, vni);
        addMacFilter(options, mac);
        options
            .add_option("--source", source,
                        "Only this switch by name; all: every switch; hsc, qvx, evpn: that source")
            ->type_name("NAME");
        addVtepFilter(options, *vteps);
    }

    void render(Mount const & mount, int fd, Output const & output) {
        auto const & state = mount.received;
        command = Cli::vcsVniReceivedFactory(state.switches, state.sources, state.evpn,
                                             output.vniDotted, vni, mac, source, vteps);
        renderOn(fd, output, *command);
    }
};

} // namespace

void addMacReceived(CLI::App & mac, CommandLine & chosen) {
    addCommand<MacReceived>(mac, "received",
                            "The MAC tables received from switches and other sources", chosen);
}

} // namespace vxshow
