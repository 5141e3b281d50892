#pragma once

#include "vxshow/system/ChildSlot.h"
#include "vxshow/system/OwnedDescriptor.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace vxshow::system {

/// A program that runs, from its start until it is reaped.
///
/// The child is a clone in the memory of this process, whose thread waits until it has become
/// the program. A fork copies the page tables, and this process may hold a large state: with
/// 400 MB held, starting /bin/true and waiting for its end takes 16 ms by fork and
/// 0.6 ms this way. `posix_spawn`, which is as quick, has no place for the child to list
/// itself and to ask for its death with ours.
class Child {
public:
    /// Starts the program `words`, of which there is one at least and none with a zero byte.
    /// Raises `std::system_error` as the system refuses; ECANCELED after `killAllChildren`.
    ///
    /// It is killed when the thread ends that calls this: that has to stay until it is reaped.
    Child(std::vector<std::string> const & words, ChildSlot slot);

    Child(Child const &) = delete;
    Child & operator=(Child const &) = delete;

    /// As `end`, unless that was called.
    ~Child();

    /// What it prints; reading does not wait.
    int output() const noexcept { return output_.number(); }

    /// What it says on standard error; reading does not wait.
    int errors() const noexcept { return errors_.number(); }

    /// Can be read, says `poll`, once it has ended.
    int ended() const noexcept { return ended_.number(); }

    /// Kills what is left of it and of its group, and reaps it: the status, as of `waitpid`.
    /// One that has become another user's and must not be killed by us is let go; 0 then.
    int end() noexcept;

private:
    void start(std::vector<std::string> const & words, int output, int errors);
    void letGo() noexcept;

    ChildSlot slot_;
    pid_t pid_ = -1;
    OwnedDescriptor output_;
    OwnedDescriptor errors_;
    OwnedDescriptor ended_;
};

} // namespace vxshow::system
