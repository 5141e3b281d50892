#pragma once

#include "vxshow/cli/command/AddCommand.h"

/// The commands whose collected objects `model --of` shows. Each function adds the filters of
/// its command to `options`.
namespace vxshow::cli::command {

Collection collectMacReceived(CLI::App & options);
Collection collectMacAdvertised(CLI::App & options);
Collection collectArpReceived(CLI::App & options);
Collection collectArpAdvertised(CLI::App & options);
Collection collectRouterMap(CLI::App & options);
Collection collectRouterDetail(CLI::App & options);
Collection collectRouterRoutes(CLI::App & options);

} // namespace vxshow::cli::command
