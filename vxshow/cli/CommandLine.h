#pragma once

#include "vxshow/cli/FormOptions.h"
#include "vxshow/cli/OutputOptions.h"
#include "vxshow/cli/StateOptions.h"
#include "vxshow/config/Settings.h"
#include "vxshow/listing/TableColumns.h"
#include "vxshow/state/Mount.h"
#include "vxshow/state/Selection.h"
#include "vxshow/state/StateReader.h"
#include "vxshow/terminal/Color.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vxshow::cli {

/// A checked command line: everything that was typed is now a value.
struct CommandLine {
    StateOptions state;
    FormOptions form; ///< as typed; what is shown of it is in `output`
    Output output;
    std::optional<unsigned> traceLevel; ///< records up to this level go to standard error

    bool usesPager = true; ///< on a terminal
    terminal::ColorChoice color = terminal::ColorChoice::automatic;

    /// What the configuration files set, once the command line is read. Options and variables,
    /// which count for more, are elsewhere.
    std::shared_ptr<config::Settings> settings = std::make_shared<config::Settings>();
    bool usesSettings = true; ///< whether the command needs the configuration files

    std::string command;          ///< its words, "mac received"
    bool readsState = true;       ///< whether the command needs the state
    bool draws = true;            ///< whether it lists the state, so that --watch can repeat it
    bool takesIncomplete = true;  ///< whether it runs when a source could not be read
    bool toStandardOutput = true; ///< whether it prints what it shows, rather than writing files
    state::Selection selection;   ///< the part of the state that it uses
    listing::Tables tables;       ///< what it lists; none if it has no rows

    /// The names in its filters that the state does not have, one line of printable ASCII each.
    /// Empty for a command without such filters.
    std::function<std::vector<std::string>(state::Reading const &)> unknownNames;

    /// Builds the library's command from the state and the typed filters, and renders it to
    /// `fd`, or writes its rows there. Raises what the library raises.
    std::function<void(state::Mount const &, int fd, Output const &)> render;

    /// How many addresses of the text that was last rendered for a terminal are cut and read as
    /// other ones. Allocates nothing. Empty if the text cuts none.
    std::function<std::size_t()> cutAddresses;
};

/// The command line asks for help or the version instead of a command.
struct Help {
    std::string text;
    bool isAsked = true; ///< false: nothing was typed, which is a usage error
};

/// The command line is invalid; one line says what was typed and what is accepted.
struct UsageError {
    std::string line;
};

/// A configuration file cannot be read; one line says why.
struct InvalidConfig {
    std::string line;
};

/// Adds the commands to the program, given the arguments of `main`. The one that is typed fills in
/// the `CommandLine`.
using AddCommands = std::function<void(CLI::App &, CommandLine &, int, char const * const *)>;

/// Gives `app` the program's options and commands, whose values go to `chosen`: all that parsing,
/// help and completion know. `argc` and `argv` are those of `main`, and `addCommands` is
/// `command::addCommands`. `chosen` must outlive the parsing.
void describeCommandLine(CLI::App & app, CommandLine & chosen, int argc, char const * const * argv,
                         AddCommands const & addCommands);

/// Reads the arguments of `main`, the environment variables that can replace an option, and the
/// configuration files, unless only help or the version is asked for.
/// `addCommands` is `command::addCommands`: the commands are built on this file, which
/// therefore does not know them.
std::variant<CommandLine, Help, UsageError, InvalidConfig>
readCommandLine(int argc, char const * const * argv, AddCommands const & addCommands);

} // namespace vxshow::cli
