#include "vxshow/CommandLine.h"

#include "vxshow/Refusals.h"
#include "vxshow/command/Commands.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <charconv>

namespace vxshow {

namespace {

constexpr char const * version = "vxshow 0.1.0";

constexpr char const * footer =
    "The options --state, --json, --pretty, --revision, --dotted and --trace stand before or\n"
    "after the command; vxshow --help explains them.\n\n"
    "Examples:\n"
    "  vxshow --state fabric.json mac received --vni 10\n"
    "  vxshow --json mac received --source leaf1 --state fabric.json\n"
    "  vxshow --state fabric.json arp advertised --ip 2001:db8::1\n"
    "  vxshow --state fabric.json router routes --prefix 10.20.0.0/16\n";

/// A whole number in a range, read to its last character.
void addNumber(CLI::App & app, std::string const & name, Vex::U32 low, Vex::U32 high,
               std::string const & help, std::function<void(Vex::U32)> const & store) {
    app.add_option_function<std::string>(
           name,
           [=](std::string const & text) {
               Vex::U32 number = 0;
               char const * const end = text.data() + text.size();
               auto const [stop, error] = std::from_chars(text.data(), end, number);
               if (text.empty() || stop != end || error != std::errc() || number < low ||
                   number > high) {
                   throw CLI::ValidationError(
                       name, "'" + text + "': expected a whole number from " + std::to_string(low) +
                                 " to " + std::to_string(high));
               }
               store(number);
           },
           help)
        ->type_name("N");
}

void addOutputOptions(CLI::App & app, CommandLine & chosen) {
    app.add_option("--state", chosen.statePath, "Snapshot to read; - is standard input")
        ->envname("VXSHOW_STATE")
        ->type_name("FILE");
    auto * json = app.add_flag_callback(
        "--json", [&] { chosen.output.format = Format::compactJson; }, "JSON on one line");
    auto * pretty = app.add_flag_callback(
        "--pretty", [&] { chosen.output.format = Format::indentedJson; }, "Indented JSON");
    json->excludes(pretty)->disable_flag_override();
    pretty->disable_flag_override();
    addNumber(app, "--revision", 0, 0xFFFFFFFF, "Revision of the JSON documents; 2 unless given",
              [&](Vex::U32 number) { chosen.output.revision = number; });
    app.add_flag("--dotted", chosen.output.vniDotted, "Show VNIs as three bytes, 0.16.2")
        ->disable_flag_override();
    addNumber(app, "--trace", 0, 9, "Write trace records up to this level to standard error",
              [&](Vex::U32 number) { chosen.traceLevel = number; });
}

/// The first word of several commands; the second one follows it.
CLI::App * addGroup(CLI::App & app, std::string const & name, std::string const & help) {
    return app.add_subcommand(name, help)->require_subcommand(1)->fallthrough();
}

} // namespace

std::variant<CommandLine, Help, UsageError> readCommandLine(int argc, char const * const * argv) {
    CommandLine chosen;
    CLI::App app("Shows what a VXLAN fabric knows", "vxshow");
    app.footer(footer);
    app.set_version_flag("--version", version);
    app.require_subcommand(1);
    addOutputOptions(app, chosen);

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

    if (auto line = missingValue(app, argc, argv)) {
        return UsageError{*std::move(line)};
    }
    try {
        app.parse(argc, argv);
    } catch (CLI::CallForHelp const &) {
        return Help{app.help()};
    } catch (CLI::CallForVersion const &) {
        return Help{std::string(version) + "\n"};
    } catch (CLI::ParseError const & error) {
        return UsageError{refusal(app, error)};
    }
    if (chosen.readsState && chosen.statePath.empty()) {
        return UsageError{"no state to show: give --state FILE, or set VXSHOW_STATE"};
    }
    return chosen;
}

} // namespace vxshow
