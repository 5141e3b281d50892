#include "vxshow/cli/CommandLine.h"

#include "Vex/Errors.h"
#include "Vex/KeyedHash.h"
#include "vxshow/cli/NumberOption.h"
#include "vxshow/cli/Refusals.h"
#include "vxshow/cli/Version.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

namespace vxshow::cli {

namespace {

constexpr char const * footer =
    "Options shared by all commands (--state, --fabric, --json and so on) can be given before\n"
    "or after the command; vxshow --help lists them.\n\n"
    "Examples:\n"
    "  vxshow --state fabric.json mac received --vni 10\n"
    "  vxshow --json mac received --source leaf1 --state fabric.json\n"
    "  vxshow --state fabric.json arp advertised --ip 2001:db8::1\n"
    "  vxshow --state fabric.json router routes --prefix 10.20.0.0/16\n"
    "  vxshow --ovsdb tcp:192.0.2.7:6640 mac received --watch 5\n"
    "  vxshow --fabric fabric.toml capture saved.json\n";

void addOutputOptions(CLI::App & app, CommandLine & chosen) {
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
    app.add_flag_callback(
           "--no-pager", [&] { chosen.usesPager = false; },
           "Do not show a listing that is longer than the terminal in PAGER, or less")
        ->disable_flag_override();
    addNumber(app, "--trace", 0, 9, "Write trace records up to this level to standard error",
              [&](Vex::U32 number) { chosen.traceLevel = number; });
}

/// The line that refuses a value of VEX_HASH_SEED, which the platform ignores.
std::optional<std::string> refuseHashSeed() {
    char const * const text = Vex::hashSeedText();
    if (!text || Vex::isHashSeed(text)) {
        return std::nullopt;
    }
    return "VEX_HASH_SEED: " + Vex::quoted(text) +
           ": expected a whole number from 0 to 18446744073709551615";
}

} // namespace

std::variant<CommandLine, Help, UsageError> readCommandLine(int argc, char const * const * argv,
                                                            AddCommands const & addCommands) {
    CommandLine chosen;
    CLI::App app("Shows what a VXLAN fabric knows", "vxshow");
    app.footer(footer);
    app.set_version_flag("--version", version);
    app.require_subcommand(1);
    addStateOptions(app, chosen.state);
    addOutputOptions(app, chosen);
    addCommands(app, chosen, argc, argv);

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
    if (auto line = refuseHashSeed()) {
        return UsageError{*std::move(line)};
    }
    if (auto line = chosen.readsState ? completeStateOptions(chosen.state) : std::nullopt) {
        return UsageError{*std::move(line)};
    }
    if (chosen.state.watchSeconds && chosen.state.snapshotPath == "-") {
        return UsageError{"--watch: standard input can be read only once; expected a file or live "
                          "sources"};
    }
    if (chosen.state.watchSeconds && !chosen.draws) {
        return UsageError{"--watch: not available for " + chosen.command};
    }
    return chosen;
}

} // namespace vxshow::cli
