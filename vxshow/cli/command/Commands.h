#pragma once

#include "vxshow/cli/CommandLine.h"

#include <CLI/App.hpp>

/// The commands, a file each. Each function adds one of them to the command that its first
/// word is. When it is the one that was typed, it fills the command and the render step of
/// `chosen`, which must outlive the parsing.
namespace vxshow::cli::command {

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
