#pragma once

#include "vxshow/cli/CommandLine.h"

#include "Vex/TypeOperations.h"

#include <CLI/App.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// What all commands have in common.
namespace vxshow::cli::command {

/// Adds the command `name` to `group`. A `Typed` holds the typed filters and the library's command
/// that is built from them:
///
///     void addFilters(CLI::App & command);   // its options, which fill the filters
///     Selection selection() const;           // the part of the state that it uses
///     std::vector<std::string> unknown(Reading const & state) const; // names it does not have
///     void render(Mount const & mount, int fd, Output const & output);
///     Vex::AnyValues collect(Mount const & mount, Output const & output);
///
/// It lives as long as the command line, so until the process ends, and so does what it holds:
/// destroying millions of entries first would only keep the user waiting.
template <class Typed>
void addCommand(CLI::App & group, std::string const & name, std::string const & help,
                CommandLine & chosen) {
    auto * command = group.add_subcommand(name, help);
    // Allows the program's own options after the command as well.
    command->fallthrough();
    auto const typed = std::make_shared<Typed>();
    typed->addFilters(*command);
    command->callback([&chosen, typed, words = group.get_name() + ' ' + name] {
        chosen.command = words;
        chosen.selection = typed->selection();
        chosen.unknownNames = [typed](state::Reading const & state) {
            return typed->unknown(state);
        };
        chosen.render = [typed](state::Mount const & mount, int fd, Output const & output) {
            typed->render(mount, fd, output);
        };
    });
}

/// A command as `model --of` uses it, with the filters that were typed.
struct Collection {
    std::function<state::Selection()> selection;
    std::function<std::vector<std::string>(state::Reading const &)> unknownNames;
    /// The library's command after it has collected, and the tables that it does not hold itself.
    std::function<Vex::AnyValues(state::Mount const &, Output const &)> collect;
};

/// Adds the filters of a command to `options`, those of `model`.
template <class Typed>
Collection addCollection(CLI::App & options) {
    auto const typed = std::make_shared<Typed>();
    typed->addFilters(options);
    return {[typed] { return typed->selection(); },
            [typed](state::Reading const & state) { return typed->unknown(state); },
            [typed](state::Mount const & mount, Output const & output) {
                return typed->collect(mount, output);
            }};
}

/// Renders the library's `command` in the format that the user asked for.
template <class Command>
void renderOn(int fd, Output const & output, Command & command) {
    command.render(static_cast<Vex::U32>(fd), static_cast<Vex::U32>(output.format),
                   output.revision);
}

} // namespace vxshow::cli::command
