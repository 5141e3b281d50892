#pragma once

#include "vxshow/system/Run.h"

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vxshow::test {

/// Limits that no program of a test reaches, on however busy a machine.
system::Limits patient();

/// The words that run `script`, in which `$1` and so on are `arguments`.
std::vector<std::string> shell(std::string const & script,
                               std::vector<std::string> const & arguments = {});

/// Runs `words` patiently, and fails the test unless they have ended by themselves.
system::Exited exited(std::vector<std::string> const & words);

/// Runs `script` until a time limit that leaves it the time to print what ends in a line end;
/// returns that.
std::string printedBeforeTheTimeLimit(std::string const & script);

/// Waits until `condition` holds, for half a minute.
bool soon(std::function<bool()> const & condition);

/// Waits until there is no such process, or only its exit status.
bool diesSoon(pid_t pid);

/// A folder that lives as long as the object.
class Folder {
public:
    Folder();
    Folder(Folder const &) = delete;
    Folder & operator=(Folder const &) = delete;
    ~Folder();

    std::string path(std::string const & name = "") const { return path_ + "/" + name; }

    /// Writes a file with those permissions; returns its path.
    std::string put(std::string const & name, std::string const & text, mode_t mode) const;

private:
    std::string path_;
};

} // namespace vxshow::test
