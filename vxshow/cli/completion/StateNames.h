#pragma once

#include "vxshow/cli/StateOptions.h"
#include "vxshow/cli/completion/NamesCache.h"
#include "vxshow/state/Mount.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vxshow::cli::completion {

/// The longest snapshot that is read for its names, and fabric file, in bytes. A usual snapshot of
/// that size takes a seventh of the time that there is; one of nothing but names can take more, and
/// is then given up.
inline constexpr std::size_t longestSnapshot = std::size_t{4} << 20;
inline constexpr std::size_t longestFabricFile = std::size_t{1} << 20;

/// The names in a state for each of the filters that are completed.
NamesByOption namesIn(state::Mount const & mount);

/// The names that the filter `option` can have in the state: VNIs, and switches and routers by
/// name. Of live sources they are those that `liveNames` knows, and of a fabric file those of its
/// switches in any case. Only regular files are opened. Where names cannot be known quickly, or the
/// file is invalid, there are none. In order, each once.
std::vector<std::string> namesInState(std::string const & option, StateOptions options,
                                      config::Settings const & settings);

} // namespace vxshow::cli::completion
