#pragma once

#include "vxshow/cli/FilterOptions.h"
#include "vxshow/state/Selection.h"

#include <string>

/// The filters of each subject, shared by its commands.
namespace vxshow::cli::command {

/// The filters of `mac`. `name` is a source or a destination, so the command names its option.
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

/// The part of the state that all commands of `router` use.
inline state::Selection selectsRouters() {
    return {.received = false, .advertised = false};
}

/// The filter shared by all commands of `router`.
struct RouterFilter {
    std::string name;

    void addTo(CLI::App & command) {
        command.add_option("--router", name, "Only this logical router by name")->type_name("NAME");
    }
};

} // namespace vxshow::cli::command
