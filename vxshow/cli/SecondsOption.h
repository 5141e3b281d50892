#pragma once

#include <CLI/App.hpp>

#include <chrono>
#include <functional>
#include <string>

namespace vxshow::cli {

/// Adds an option for a time in seconds, such as 5 or 0.5: from 1 millisecond to an hour. Calls
/// `store` with it.
void addSeconds(CLI::App & app, std::string const & name, std::string const & help,
                std::function<void(std::chrono::milliseconds)> const & store);

} // namespace vxshow::cli
