#pragma once

#include "Vex/Errors.h"
#include "vxshow/state/tables/TableFiles.h"

#include <string>
#include <string_view>
#include <system_error>

namespace vxshow::state::tables {

/// The source that the tables belong to.
inline constexpr std::string_view evpnSource = "EVPN";

inline constexpr std::string_view receivedHosts = "received-hosts";
inline constexpr std::string_view receivedFlood = "received-flood";
inline constexpr std::string_view advertisedHosts = "advertised-hosts";
inline constexpr std::string_view advertisedFlood = "advertised-flood";

/// Raises the error of a system call on `path`.
[[noreturn]] inline void throwErrnoOn(std::string const & path, int error) {
    throw TableFileError(Vex::printable(path) + ": " + std::generic_category().message(error));
}

/// The line about the file `path` for the platform's message about the table `table`, which starts
/// with the table's name: "table 'TABLE', slot 5: PROBLEM" becomes "PATH: slot 5: PROBLEM".
inline std::string lineOn(std::string const & path, std::string const & table,
                          std::string_view words) {
    std::string const name = "table " + Vex::quoted(table);
    if (words.starts_with(name + ", ") || words.starts_with(name + ": ")) {
        words.remove_prefix(name.size() + 2);
    }
    return Vex::printable(path).append(": ").append(words);
}

} // namespace vxshow::state::tables
