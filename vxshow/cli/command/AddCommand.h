#pragma once

#include "vxshow/cli/CommandLine.h"

#include <CLI/App.hpp>

#include <memory>
#include <string>

/// What all commands have in common.
namespace vxshow::cli::command {

/// Adds the command `name` to `group`. A `Typed` holds the typed filters and the library's command
/// that is built from them:
///
///     void addFilters(CLI::App & command);   // its options, which fill the filters
///     Selection selection() const;           // the part of the state that it uses
///     void render(Mount const & mount, int fd, Output const & output);
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
        chosen.render = [typed](state::Mount const & mount, int fd, Output const & output) {
            typed->render(mount, fd, output);
        };
    });
}

/// Renders the library's `command` in the format that the user asked for.
template <class Command>
void renderOn(int fd, Output const & output, Command & command) {
    command.render(static_cast<Vex::U32>(fd), static_cast<Vex::U32>(output.format),
                   output.revision);
}

} // namespace vxshow::cli::command
