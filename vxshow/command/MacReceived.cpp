#include "vxshow/command/MacReceived.h"

#include "VxlanController/VxlanControllerCliModel.h"
#include "vxshow/FilterOptions.h"

#include <memory>

namespace vxshow {

namespace {

namespace Cli = VxlanController::Cli;

struct Filters {
    Vxlan::VniOrNone vni;
    Nolt::EthAddr mac;
    std::string source;
    std::vector<Nolt::IpAddr> vteps;
};

void render(Mount const & mount, Filters const & filters, int fd, Output const & output) {
    auto const vteps = Cli::vtepListFactory();
    for (Nolt::IpAddr vtep : filters.vteps) {
        vteps->vtepIs(vtep, true);
    }
    auto const command = Cli::vcsVniReceivedFactory(
        mount.received.switches, mount.received.sources, mount.received.evpn, output.vniDotted,
        filters.vni, filters.mac, filters.source, vteps);
    command->render(static_cast<Vex::U32>(fd), static_cast<Vex::U32>(output.format),
                    output.revision);
}

} // namespace

void addMacReceived(CLI::App & mac, CommandLine & chosen) {
    auto * received =
        mac.add_subcommand("received", "The MAC tables received from switches and other sources");
    auto const filters = std::make_shared<Filters>();
    addVniFilter(*received, filters->vni);
    addMacFilter(*received, filters->mac);
    received
        ->add_option("--source", filters->source,
                     "Only this switch by name; all: every switch; hsc, qvx, evpn: that source")
        ->type_name("NAME");
    addVtepFilter(*received, filters->vteps);
    received->callback([&chosen, filters] {
        chosen.command = "mac received";
        chosen.render = [filters](Mount const & mount, int fd, Output const & output) {
            render(mount, *filters, fd, output);
        };
    });
}

} // namespace vxshow
