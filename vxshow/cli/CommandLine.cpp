#include "vxshow/cli/CommandLine.h"

#include "Vex/Errors.h"
#include "Vex/KeyedHash.h"
#include "vxshow/cli/ColorOption.h"
#include "vxshow/cli/FixedValues.h"
#include "vxshow/cli/FormOptions.h"
#include "vxshow/cli/HelpText.h"
#include "vxshow/cli/NumberOption.h"
#include "vxshow/cli/Refusals.h"
#include "vxshow/cli/Version.h"
#include "vxshow/config/ReadSettings.h"
#include "vxshow/terminal/Screen.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <memory>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace vxshow::cli {

namespace {

constexpr char const * examples =
    "Examples:\n"
    "  vxshow --state fabric.json mac received --vni 10,20-30\n"
    "  vxshow --json mac received --source leaf1 --state fabric.json\n"
    "  vxshow --state fabric.json arp advertised --ip 2001:db8::1\n"
    "  vxshow --state fabric.json router routes --prefix 10.20.0.0/16\n"
    "  vxshow --state fabric.json -o wide mac received --sort -moveCount --top 10\n"
    "  vxshow --ovsdb tcp:192.0.2.7:6640 mac received --watch 5\n"
    "  vxshow --fabric fabric.toml capture saved.json\n"
    "  vxshow -F dc1 mac received\n";

void addOutputOptions(CLI::App & app, CommandLine & chosen) {
    addNumber(app, "--revision", 0, 0xFFFFFFFF, "Revision of the JSON documents; 2 unless given",
              [&](Vex::U32 number) { chosen.output.revision = number; });
    app.add_flag("--dotted", chosen.output.vniDotted, "Show VNIs as three bytes, 0.16.2")
        ->disable_flag_override();
    app.add_flag_callback(
           "--no-pager", [&] { chosen.usesPager = false; },
           "Do not show a listing that is longer than the terminal in PAGER, or less")
        ->disable_flag_override();
    addColorOption(app, chosen.color);
    addNumber(
        app, "--trace", 0, 9,
        "Write trace records up to this level to standard error: 1, parts of the state that "
        "are missing; 8, functions of the library that are entered, too",
        [&](Vex::U32 number) { chosen.traceLevel = number; },
        ": 1 traces what is missing, 8 functions, too");
}

/// The options that every command takes, in groups of the help.
void addGlobalOptions(CLI::App & app, CommandLine & chosen) {
    constexpr char const * outputGroup = "Output";
    auto & defaults = *app.option_defaults();
    std::string const otherGroup = defaults.get_group();
    defaults.group("State");
    addStateOptions(app, chosen.state);
    defaults.group(outputGroup);
    addFormOptions(app, chosen.form);
    addOutputOptions(app, chosen);
    defaults.group(otherGroup);
    app.get_option("--watch")->group(outputGroup);
    auto * const trace = app.get_option("--trace")->group(otherGroup);
    declareValues(*trace, {"1", "8"});
}

/// The answer to `vxshow help WORDS`. Options among the words change nothing.
std::variant<CommandLine, Help, UsageError, InvalidConfig>
describe(CLI::App const & app, std::vector<std::string> const & words) {
    CLI::App const * command = &app;
    for (std::string const & word : words) {
        if (word.starts_with("-")) {
            continue;
        }
        CLI::App const * const below = commandNamed(*command, word);
        if (!below) {
            return UsageError{unknownWord(*command, word)};
        }
        command = below;
    }
    auto const & described = isListed(*command) ? *command : app;
    return Help{app.get_formatter()->make_help(&described, commandWords(described),
                                               CLI::AppFormatMode::Normal)};
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

void describeCommandLine(CLI::App & app, CommandLine & chosen, int argc, char const * const * argv,
                         AddCommands const & addCommands) {
    app.description("Shows what a VXLAN fabric knows");
    app.name("vxshow");
    app.footer(examples);
    app.set_help_flag("-h,--help", "Describe the program, or the command before it");
    app.set_version_flag("-V,--version", version, "Print the version");
    app.require_subcommand(1);
    addGlobalOptions(app, chosen);
    addCommands(app, chosen, argc, argv);
}

std::variant<CommandLine, Help, UsageError, InvalidConfig>
readCommandLine(int argc, char const * const * argv, AddCommands const & addCommands) {
    CommandLine chosen;
    CLI::App app;
    auto const formatter = std::make_shared<HelpFormatter>();
    app.formatter(formatter);
    describeCommandLine(app, chosen, argc, argv, addCommands);
    if (argc <= 1) {
        return Help{shortUsage(app, terminal::screenSize(STDERR_FILENO).columns), false};
    }
    // Without a group it is in no list of commands.
    auto * const help = app.add_subcommand(helpCommand)->prefix_command()->group("");
    help->set_help_flag();

    if (auto line = missingValue(app, argc, argv)) {
        return UsageError{*std::move(line)};
    }
    try {
        app.parse(argc, argv);
    } catch (CLI::CallForHelp const &) {
        formatter->columnsAre(terminal::screenSize(STDOUT_FILENO).columns);
        return Help{app.help()};
    } catch (CLI::CallForVersion const &) {
        return Help{std::string(version) + "\n"};
    } catch (CLI::ParseError const & error) {
        return UsageError{refusal(app, error)};
    }
    if (help->parsed()) {
        formatter->columnsAre(terminal::screenSize(STDOUT_FILENO).columns);
        return describe(app, help->remaining());
    }
    try {
        if (chosen.usesSettings) {
            *chosen.settings = config::readSettings();
        }
    } catch (config::ConfigError const & error) {
        return InvalidConfig{error.what()};
    }
    if (chosen.settings->color && app.get_option("--color")->count() == 0) {
        chosen.color = configuredColor(*chosen.settings->color);
    }
    chosen.form.preferred = chosen.settings->form.value_or("");
    if (auto line = completeForm(chosen.form, chosen.command, chosen.tables, chosen.output)) {
        return UsageError{*std::move(line)};
    }
    if (auto line = refuseHashSeed()) {
        return UsageError{*std::move(line)};
    }
    if (auto line = chosen.readsState ? completeStateOptions(chosen.state, *chosen.settings)
                                      : std::nullopt) {
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
