#pragma once

#include <CLI/App.hpp>

#include <optional>
#include <string>
#include <string_view>

/// Errors that the command-line library does not detect, or reports without what was typed.
namespace vxshow::cli {

/// The error line if an option in `argv` lacks its value, as when a script's variable is empty;
/// nullopt if every option has its value. The library would take the next option as the value.
std::optional<std::string> missingValue(CLI::App const & app, int argc, char const * const * argv);

/// The command that describes another one; no list of commands has it.
inline constexpr char const * helpCommand = "help";

/// The error line for `word`, which is no command of `app`: what is expected, and what was probably
/// meant.
std::string unknownWord(CLI::App const & app, std::string_view word);

/// The error line for a command line that could not be parsed: what was typed, and what is
/// accepted.
std::string refusal(CLI::App const & app, CLI::ParseError const & error);

} // namespace vxshow::cli
