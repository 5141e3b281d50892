#pragma once

#include <string>

namespace vxshow::system {

/// The result of looking up a program along a PATH.
struct ProgramPath {
    std::string path;     ///< the file to execute, always with a slash; empty if not found
    int error = 0;        ///< why it was not found: ENOENT, EACCES or another errno value
    bool refused = false; ///< whether it is only in a folder that `RelativeEntries::skip` skips
};

/// Whether empty and relative entries of a PATH count. They mean a folder below the current one,
/// which anyone can have written to.
enum class RelativeEntries : bool { use, skip };

/// Finds the first executable file `name` along `path`, as `execvp` does. A name with a slash is a
/// path already and is returned unchanged, without a look at the file.
ProgramPath findProgram(std::string const & name, std::string const & path,
                        RelativeEntries relative);

/// As above, along the PATH of this process. Relative entries are skipped if it runs as root.
ProgramPath findProgram(std::string const & name);

} // namespace vxshow::system
