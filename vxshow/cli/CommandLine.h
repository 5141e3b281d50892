#pragma once

#include "vxshow/cli/OutputOptions.h"
#include "vxshow/cli/StateOptions.h"
#include "vxshow/state/Mount.h"
#include "vxshow/state/Selection.h"

#include <functional>
#include <optional>
#include <string>
#include <variant>

namespace vxshow::cli {

/// A checked command line: everything that was typed has become a value.
struct CommandLine {
    StateOptions state;
    Output output;
    std::optional<unsigned> traceLevel; ///< records up to this level go to standard error

    std::string command;        ///< its words, "mac received"
    bool readsState = true;     ///< whether the state is mounted for it
    bool draws = true;          ///< whether it shows the state, and would show it again
    state::Selection selection; ///< what it looks at of the state

    /// Builds the library's command from the state and the typed filters, and renders it
    /// on `fd`. Raises what the library raises.
    std::function<void(state::Mount const &, int fd, Output const &)> render;
};

/// The command line asked for a text instead of a command: help, or the version.
struct Help {
    std::string text;
};

/// The command line cannot be obeyed; one line says what was typed and what is accepted.
struct UsageError {
    std::string line;
};

/// Reads the arguments of `main`, and the environment where an option may stand there.
std::variant<CommandLine, Help, UsageError> readCommandLine(int argc, char const * const * argv);

} // namespace vxshow::cli
