#pragma once

#include "vxshow/cli/CommandLine.h"

#include "Vex/TypeOperations.h"
#include "outfmt/Interrupt.h"
#include "vxshow/listing/WriteRows.h"

#include <CLI/App.hpp>

#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// What all commands have in common.
namespace vxshow::cli::command {

/// Calls `show`. An interrupt ends it as it ends the library's commands: a line on standard output
/// says so.
template <class Show>
void endingOnInterrupt(Show && show) {
    try {
        show();
    } catch (outfmt::SigIntException const & interrupt) {
        std::printf("exiting %s\n", interrupt.what());
    }
}

/// Renders the library's forms, or writes the rows of what the command collects. An interrupt ends
/// either in the same way. `Typed` is as for `addCommand`.
template <class Typed>
void renderTyped(Typed & typed, state::Mount const & mount, int fd, Output const & output) {
    if (!output.rows) {
        return typed.render(mount, fd, output);
    }
    endingOnInterrupt([&] {
        typed.collect(mount, output);
        auto surface = output.surface;
        surface.dottedVni = output.vniDotted;
        listing::writeRows(fd, *output.rows, Typed::tables(), surface,
                           [&](std::size_t table, listing::RowSink & sink) {
                               typed.walkTable(mount, table, sink);
                           });
    });
}

/// Adds the command `name` to `group`. A `Typed` holds the typed filters and the library's command
/// that is built from them:
///
///     void addFilters(CLI::App & command);   // its options, which fill the filters
///     Selection selection() const;           // the part of the state that it uses
///     std::vector<std::string> unknown(Reading const & state) const; // names it does not have
///     void render(Mount const & mount, int fd, Output const & output);
///     Vex::AnyValues collect(Mount const & mount, Output const & output);
///     static listing::Tables tables();       // of the listing
///     // After `collect`.
///     void walkTable(Mount const & mount, std::size_t table, RowSink & sink) const;
///     // Only if the text cuts addresses; after `render` of the text for a terminal.
///     std::size_t cutAddresses() const;
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
        chosen.tables = Typed::tables();
        chosen.render = [typed](state::Mount const & mount, int fd, Output const & output) {
            renderTyped(*typed, mount, fd, output);
        };
        if constexpr (requires { typed->cutAddresses(); }) {
            chosen.cutAddresses = [typed] { return typed->cutAddresses(); };
        }
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

/// Whether the text that is shown on a terminal is to be rendered.
inline bool isTextOnTerminal(Output const & output) {
    return output.surface.isTerminal && output.format == Format::text && !output.rows;
}

/// Renders the library's `command` in the format that the user asked for.
template <class Command>
void renderOn(int fd, Output const & output, Command & command) {
    command.render(static_cast<Vex::U32>(fd), static_cast<Vex::U32>(output.format),
                   output.revision);
}

} // namespace vxshow::cli::command
