#include "vxshow/system/ProgramPath.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace vxshow::system {

namespace {

/// What the C library uses if PATH is not set.
constexpr char const * defaultPath = "/bin:/usr/bin";

/// 0 if `path` is a file that this process can execute, else the error number.
int executionError(std::string const & path) {
    struct stat status {};

    if (::stat(path.c_str(), &status) != 0) {
        return errno;
    }
    if (!S_ISREG(status.st_mode)) {
        return EACCES;
    }
    return ::faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0 ? 0 : errno;
}

/// Whether the search goes on after this error: the entry does not have the program.
bool isPassedOver(int error) {
    return error == ENOENT || error == ENOTDIR || error == ENODEV || error == ESTALE ||
           error == ETIMEDOUT;
}

} // namespace

ProgramPath findProgram(std::string const & name, std::string const & path,
                        RelativeEntries relative) {
    if (name.find('/') != std::string::npos) {
        return {name};
    }
    ProgramPath none{"", ENOENT};
    std::string_view rest = path;
    for (bool more = !name.empty(); more;) {
        auto const colon = rest.find(':');
        std::string const entry(rest.substr(0, colon));
        more = colon != std::string_view::npos;
        rest.remove_prefix(more ? colon + 1 : rest.size());
        std::string found = (entry.empty() ? "." : entry) + "/" + name;
        int const error = executionError(found);
        if (relative == RelativeEntries::skip && !entry.starts_with('/')) {
            none.refused = none.refused || error == 0;
        } else if (error == 0) {
            return {std::move(found)};
        } else if (error == EACCES) {
            none.error = EACCES;
        } else if (!isPassedOver(error)) {
            return {"", error};
        }
    }
    return none;
}

ProgramPath findProgram(std::string const & name) {
    char const * const path = std::getenv("PATH");
    return findProgram(name, path ? path : defaultPath,
                       ::geteuid() == 0 ? RelativeEntries::skip : RelativeEntries::use);
}

} // namespace vxshow::system
