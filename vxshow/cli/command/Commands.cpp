#include "vxshow/cli/command/Commands.h"

#include <string>
#include <string_view>

namespace vxshow::cli::command {

namespace {

/// The first word of several commands; the second one follows it.
CLI::App * addGroup(CLI::App & app, std::string const & name, std::string const & help) {
    return app.add_subcommand(name, help)->require_subcommand(1)->fallthrough();
}

/// The value of --of, which must be known before `model` gets its filters.
std::optional<std::string> modelOfCommand(int argc, char const * const * argv) {
    constexpr std::string_view option = "--of";
    constexpr std::string_view optionWithValue = "--of=";
    for (int i = 1; i < argc; ++i) {
        std::string_view const argument = argv[i];
        if (argument == option) {
            return i + 1 < argc ? argv[i + 1] : "";
        }
        if (argument.starts_with(optionWithValue)) {
            return std::string(argument.substr(optionWithValue.size()));
        }
    }
    return std::nullopt;
}

} // namespace

void addCommands(CLI::App & app, CommandLine & chosen, int argc, char const * const * argv) {
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
    addState(app, chosen);
    addCapture(app, chosen);
    auto * tables = addGroup(app, "tables", "The EVPN tables of the state, as shared files");
    addTablesPublish(*tables, chosen);
    addFabrics(app, chosen);
    addSchema(app, chosen);
    addCompletion(app, chosen);
    addModel(app, chosen, modelOfCommand(argc, argv));
}

} // namespace vxshow::cli::command
