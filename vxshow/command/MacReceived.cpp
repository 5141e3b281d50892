#include "vxshow/command/MacReceived.h"

#include "VxlanController/VxlanControllerCliModel.h"
#include "vxshow/FilterOptions.h"

#include <memory>

namespace vxshow {

namespace {

namespace Cli = VxlanController::Cli;

/// The filters that were typed, and the command built from them. It lives as long as the
/// command line, that is, to the end of the process: taking millions of entries apart first
/// would only keep the user waiting.
struct MacReceived {
    Vxlan::VniOrNone vni;
    Nolt::EthAddr mac;
    std::string source;
    std::vector<Nolt::IpAddr> vteps;
    Vex::Ptr<Cli::VcsVniReceived> command;
};

void render(Mount const & mount, MacReceived & typed, int fd, Output const & output) {
    auto const vteps = Cli::vtepListFactory();
    for (Nolt::IpAddr vtep : typed.vteps) {
        vteps->vtepIs(vtep, true);
    }
    typed.command = Cli::vcsVniReceivedFactory(mount.received.switches, mount.received.sources,
                                               mount.received.evpn, output.vniDotted, typed.vni,
                                               typed.mac, typed.source, vteps);
    typed.command->render(static_cast<Vex::U32>(fd), static_cast<Vex::U32>(output.format),
                          output.revision);
}

} // namespace

void addMacReceived(CLI::App & mac, CommandLine & chosen) {
    auto * received =
        mac.add_subcommand("received", "The MAC tables received from switches and other sources");
    auto const typed = std::make_shared<MacReceived>();
    addVniFilter(*received, typed->vni);
    addMacFilter(*received, typed->mac);
    received
        ->add_option("--source", typed->source,
                     "Only this switch by name; all: every switch; hsc, qvx, evpn: that source")
        ->type_name("NAME");
    addVtepFilter(*received, typed->vteps);
    received->callback([&chosen, typed] {
        chosen.command = "mac received";
        chosen.render = [typed](Mount const & mount, int fd, Output const & output) {
            render(mount, *typed, fd, output);
        };
    });
}

} // namespace vxshow
