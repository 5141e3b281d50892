#pragma once

#include <CLI/App.hpp>

#include <cstdint>
#include <functional>
#include <string>

namespace vxshow::cli {

/// Adds an option whose whole value must be a number of bytes, at least 1: decimal digits, and K, M
/// or G after them for 1024 bytes, 1024 K or 1024 M. `store` is called with the number of bytes.
void addSize(CLI::App & app, std::string const & name, std::string const & help,
             std::function<void(std::uint64_t)> const & store);

} // namespace vxshow::cli
