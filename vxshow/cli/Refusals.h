#pragma once

#include <CLI/App.hpp>

#include <optional>
#include <string>

/// What the command-line library lets pass, or refuses without saying what was typed.
namespace vxshow::cli {

/// The line that refuses `argv` because an option that needs a value has none, as a script
/// writes it whose variable is empty; nothing when every option has its value. The library
/// would take the next option for the value and answer another question.
std::optional<std::string> missingValue(CLI::App const & app, int argc, char const * const * argv);

/// The line that tells why `app` could not be parsed: what was typed, and what is accepted.
std::string refusal(CLI::App const & app, CLI::ParseError const & error);

} // namespace vxshow::cli
