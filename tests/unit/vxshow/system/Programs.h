#pragma once

#include "vxshow/system/Run.h"

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vxshow::test {

/// Limits that no program of a test reaches, even on a busy machine.
system::Limits patient();

/// The words that run `script` in a shell, with `arguments` as `$1` and so on.
std::vector<std::string> shell(std::string const & script,
                               std::vector<std::string> const & arguments = {});

/// Runs `words` with the limits of `patient`. The test fails unless the program ends by itself.
system::Exited exited(std::vector<std::string> const & words);

/// Runs `script` into its time limit, which leaves it time to print a line; returns that line.
std::string printedBeforeTheTimeLimit(std::string const & script);

/// Waits up to half a minute for `condition` and returns whether it holds.
bool soon(std::function<bool()> const & condition);

/// Waits, as `soon`, until the process is gone or is a zombie.
bool diesSoon(pid_t pid);

/// A folder that lives as long as the object.
class Folder {
public:
    Folder();
    Folder(Folder const &) = delete;
    Folder & operator=(Folder const &) = delete;
    ~Folder();

    std::string path(std::string const & name = "") const { return path_ + "/" + name; }

    /// Writes a file with these permissions and returns its path.
    std::string put(std::string const & name, std::string const & text, mode_t mode) const;

private:
    std::string path_;
};

} // namespace vxshow::test
