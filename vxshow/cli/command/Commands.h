#pragma once

#include "vxshow/cli/CommandLine.h"

#include <CLI/App.hpp>

#include <optional>
#include <string>

/// The commands, one file each. Each function adds a command below the one that holds its first
/// word. When that command is typed, it fills in the command and the render step of `chosen`,
/// which must outlive the parsing.
namespace vxshow::cli::command {

/// Adds all commands to `app`. What filters `model` has depends on the arguments of `main`.
void addCommands(CLI::App & app, CommandLine & chosen, int argc, char const * const * argv);

void addMacReceived(CLI::App & mac, CommandLine & chosen);
void addMacAdvertised(CLI::App & mac, CommandLine & chosen);
void addArpReceived(CLI::App & arp, CommandLine & chosen);
void addArpAdvertised(CLI::App & arp, CommandLine & chosen);
void addRouterMap(CLI::App & router, CommandLine & chosen);
void addRouterDetail(CLI::App & router, CommandLine & chosen);
void addRouterRoutes(CLI::App & router, CommandLine & chosen);
void addCapture(CLI::App & app, CommandLine & chosen);
void addState(CLI::App & app, CommandLine & chosen);
void addTablesPublish(CLI::App & tables, CommandLine & chosen);
void addFabrics(CLI::App & app, CommandLine & chosen);
void addSchema(CLI::App & app, CommandLine & chosen);

void addCompletion(CLI::App & app, CommandLine & chosen);

/// `of` is the value of the option --of if it was typed: that command's filters become options of
/// `model`.
void addModel(CLI::App & app, CommandLine & chosen, std::optional<std::string> const & of);

} // namespace vxshow::cli::command
