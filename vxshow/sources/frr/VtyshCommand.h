#pragma once

#include <string>
#include <vector>

namespace vxshow::sources::frr {

/// How the `vtysh` of a routing daemon is run.
struct VtyshCommand {
    /// The program and what stands before its own options, such as `vtysh`, or
    /// `ssh leaf7 sudo vtysh`.
    std::vector<std::string> words = {"vtysh"};
    /// The path space of the daemons (`-N`); empty: none.
    std::string pathSpace = {};
    /// Whether a shell at the other end takes the arguments apart once more, as that of `ssh`
    /// does; they are quoted for it then.
    bool remoteShell = false;

    bool operator==(VtyshCommand const &) const = default;
};

} // namespace vxshow::sources::frr
