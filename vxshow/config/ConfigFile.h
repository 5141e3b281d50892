#pragma once

#include "vxshow/config/Settings.h"

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>

namespace vxshow::config {

/// A configuration file cannot be read. The text is one line of printable ASCII:
/// `FILE:LINE:COLUMN: KEY: found WHAT, expected WHAT`, `FILE:LINE:COLUMN: WHAT` if it is not
/// TOML, or `FILE: WHAT` if the error is at no place in the file.
class ConfigError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The longest configuration file, in bytes.
inline constexpr std::size_t longestConfig = std::size_t{1} << 20;

/// Reads the configuration file `path`; docs/config.md describes its keys. Returns the fabrics in
/// the order of their names. Relative file names in it count from its folder. Returns nullopt if
/// there is no such file, or if its folder cannot be searched, so that nothing is known of it.
///
/// The file names programs to run, directly as the pager and through fabric files. It is therefore
/// refused if it belongs to neither this process's user nor root, or if everyone can write to it,
/// and if it is not a regular file. Raises `ConfigError`, including for an unknown key.
std::optional<Settings> readConfigFile(std::string const & path);

} // namespace vxshow::config
