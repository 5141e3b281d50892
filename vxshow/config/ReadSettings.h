#pragma once

#include "vxshow/config/ConfigFile.h"
#include "vxshow/config/Settings.h"

#include <string>
#include <string_view>

namespace vxshow::config {

/// Reads the user's configuration file and the system's. What the user's file sets counts; a fabric
/// in it hides the system's of the same name. Raises `ConfigError` if either file is invalid.
///
/// The user's file is `vxshow/config.toml` in XDG_CONFIG_HOME, or in `$HOME/.config` if that is
/// unset, empty or relative: the XDG base directory specification ignores relative paths. Without
/// an absolute HOME there is none. The system's file is /etc/vxshow/config.toml, or what
/// VXSHOW_SYSTEM_CONFIG names; none if that is set to nothing. XDG_CONFIG_DIRS is not read:
/// desktops set it, and it would take the place of /etc there.
Settings readSettings();

/// The fabric of this name that is not hidden; null if there is none.
NamedFabric const * fabricNamed(Settings const & settings, std::string_view name);

/// The error line for `name`, which names no fabric: what was probably meant, and the names that
/// there are.
std::string unknownFabric(Settings const & settings, std::string_view name);

} // namespace vxshow::config
