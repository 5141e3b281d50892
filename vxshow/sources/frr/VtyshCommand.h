#pragma once

#include <string>
#include <vector>

namespace vxshow::sources::frr {

/// How the `vtysh` of a routing daemon is run.
struct VtyshCommand {
    /// The program and what comes before its own options, such as `vtysh` or
    /// `ssh leaf7 sudo vtysh`.
    std::vector<std::string> words = {"vtysh"};
    /// The path space of the daemons (`-N`); empty: none.
    std::string pathSpace = {};
    /// Whether a shell at the other end splits the arguments again, as with `ssh`; then they are
    /// quoted for it.
    bool remoteShell = false;

    bool operator==(VtyshCommand const &) const = default;
};

} // namespace vxshow::sources::frr
