#include "vxshow/cli/command/Commands.h"

#include <string>

namespace vxshow::cli::command {

namespace {

/// The first word of several commands; the second one follows it.
CLI::App * addGroup(CLI::App & app, std::string const & name, std::string const & help) {
    return app.add_subcommand(name, help)->require_subcommand(1)->fallthrough();
}

} // namespace

void addCommands(CLI::App & app, CommandLine & chosen) {
    auto * mac = addGroup(app, "mac", "MAC address tables");
    addMacReceived(*mac, chosen);
    addMacAdvertised(*mac, chosen);
    auto * arp = addGroup(app, "arp", "ARP tables: which IP address has which MAC address");
    addArpReceived(*arp, chosen);
    addArpAdvertised(*arp, chosen);
    auto * router = addGroup(app, "router", "Logical routers: where they are, ports and routes");
    addRouterMap(*router, chosen);
    addRouterDetail(*router, chosen);
    addRouterRoutes(*router, chosen);
    addCapture(app, chosen);
    addModel(app, chosen);
}

} // namespace vxshow::cli::command
