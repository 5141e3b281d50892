#pragma once

#include "vxshow/cli/FilterOptions.h"
#include "vxshow/state/Selection.h"

#include <string>

/// The filters of each subject, which its received and its advertised command share.
namespace vxshow::cli::command {

/// The filters of `mac`. The last one is a source or a destination: its option is named by
/// the command.
struct MacFilters {
    Vxlan::VniOrNone vni;
    Nolt::EthAddr mac;
    std::string name;
    Vex::Ptr<VxlanController::Cli::VtepList> vteps = VxlanController::Cli::vtepListFactory();

    void addTo(CLI::App & command, std::string const & nameOption, std::string const & nameHelp) {
        addVniFilter(command, vni);
        addMacFilter(command, mac);
        command.add_option(nameOption, name, nameHelp)->type_name("NAME");
        addVtepFilter(command, *vteps, "Only entries with one of these VTEPs, IPv4");
    }
};

/// The filters of `arp`.
struct ArpFilters {
    Vxlan::VniOrNone vni;
    Nolt::EthAddr mac;
    Nolt::IpGenAddr ip;

    void addTo(CLI::App & command) {
        addVniFilter(command, vni);
        addMacFilter(command, mac);
        addIpFilter(command, ip);
    }
};

/// What all commands of `router` look at.
inline state::Selection selectsRouters() {
    return {.received = false, .advertised = false};
}

/// The filter that all commands of `router` have.
struct RouterFilter {
    std::string name;

    void addTo(CLI::App & command) {
        command.add_option("--router", name, "Only this logical router by name")->type_name("NAME");
    }
};

} // namespace vxshow::cli::command
