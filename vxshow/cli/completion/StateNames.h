#pragma once

#include "vxshow/cli/StateOptions.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vxshow::cli::completion {

/// The longest snapshot that is read for its names, and fabric file, in bytes. A usual snapshot of
/// that size takes a seventh of the time that there is; one of nothing but names can take more, and
/// is then given up.
inline constexpr std::size_t longestSnapshot = std::size_t{4} << 20;
inline constexpr std::size_t longestFabricFile = std::size_t{1} << 20;

/// The names that the filter `option` can have in the state: of a snapshot, its VNIs and its
/// switches and routers by name; of a fabric file, those of its switches. Only regular files are
/// opened, and no source is asked. Where names cannot be known quickly, or the file is invalid,
/// there are none. In order, each once.
std::vector<std::string> namesInState(std::string const & option, StateOptions options,
                                      config::Settings const & settings);

} // namespace vxshow::cli::completion
