#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vxshow::config {

/// The values of `form`, which are those of the option -o.
inline constexpr std::array<std::string_view, 6> formWords{"text", "json", "pretty",
                                                           "wide", "csv",  "jsonl"};

/// The values of `color`.
inline constexpr std::array<std::string_view, 3> colorWords{"auto", "always", "never"};

/// A fabric that can be shown by name.
struct NamedFabric {
    std::string name;        ///< without control characters, UTF-8
    std::string file;        ///< of its sources; relative only if the configuration file's path is
    std::string description; ///< for the user; empty if there is none
    std::string definedIn;   ///< the configuration file
    bool isHidden = false;   ///< by one of the same name that the user's file defines
};

/// A configuration file that can exist.
struct ConfigPath {
    std::string path;
    bool isRead = false; ///< false: there is no such file
};

/// What the configuration files set. What they do not set is left to the program.
struct Settings {
    std::optional<std::string> form = {};  ///< one of `formWords`
    std::optional<std::string> color = {}; ///< one of `colorWords`
    std::optional<std::string> pager = {}; ///< a command as in PAGER; empty: no pager
    std::vector<NamedFabric> fabrics = {}; ///< by name; a hidden one after the one that hides it
    std::vector<ConfigPath> files = {};    ///< where settings were looked for, the user's first
};

} // namespace vxshow::config
