#include "vxshow/FilterOptions.h"
#include "vxshow/command/AddCommand.h"
#include "vxshow/command/Commands.h"
#include "vxshow/command/EntryNames.h"

namespace vxshow {

namespace {

namespace Cli = VxlanController::Cli;

struct ArpAdvertised {
    Vxlan::VniOrNone vni;
    Nolt::EthAddr mac;
    Nolt::IpGenAddr ip;
    Vex::Ptr<Cli::ArpAdvertised> command;

    void addFilters(CLI::App & options) {
        addVniFilter(options, vni);
        addMacFilter(options, mac);
        addIpFilter(options, ip);
    }

    void render(Mount const & mount, int fd, Output const & output) {
        auto const & entries = mount.advertised.vnis;
        command = Cli::arpAdvertisedFactory(entries, output.vniDotted, vni, mac, ip);
        namingTheEntry(entries, NoNumber::isAnError, [&] { renderOn(fd, output, *command); });
    }
};

} // namespace

void addArpAdvertised(CLI::App & arp, CommandLine & chosen) {
    addCommand<ArpAdvertised>(arp, "advertised", "The ARP tables advertised to switches", chosen);
}

} // namespace vxshow
