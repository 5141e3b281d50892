#pragma once

#include "vxshow/cli/CommandLine.h"

#include <CLI/App.hpp>

/// The commands, one file each. Each function adds a command below the one that holds its first
/// word. When that command is typed, it fills in the command and the render step of `chosen`,
/// which must outlive the parsing.
namespace vxshow::cli::command {

/// Adds all commands to `app`.
void addCommands(CLI::App & app, CommandLine & chosen);

void addMacReceived(CLI::App & mac, CommandLine & chosen);
void addMacAdvertised(CLI::App & mac, CommandLine & chosen);
void addArpReceived(CLI::App & arp, CommandLine & chosen);
void addArpAdvertised(CLI::App & arp, CommandLine & chosen);
void addRouterMap(CLI::App & router, CommandLine & chosen);
void addRouterDetail(CLI::App & router, CommandLine & chosen);
void addRouterRoutes(CLI::App & router, CommandLine & chosen);
void addCapture(CLI::App & app, CommandLine & chosen);
void addModel(CLI::App & app, CommandLine & chosen);

} // namespace vxshow::cli::command
