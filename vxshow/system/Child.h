#pragma once

#include "vxshow/system/ChildSlot.h"
#include "vxshow/system/OwnedDescriptor.h"

#include <string>
#include <sys/types.h>
#include <system_error>
#include <vector>

namespace vxshow::system {

/// The program is only in an empty or relative entry of PATH, which root does not use. The code is
/// ENOENT.
class RelativeEntryRefused : public std::system_error {
public:
    using std::system_error::system_error;
};

/// A running program, from its start until it is reaped.
///
/// The child is a clone that shares the memory of this process; the starting thread waits until it
/// has executed the program. A fork would copy the page tables, and this process can hold a large
/// state: with 400 MB, starting /bin/true and waiting for its end takes 16 ms with fork and
/// 0.6 ms this way. `posix_spawn` is as quick, but does not let the child enter its slot or set
/// its parent-death signal.
class Child {
public:
    /// Starts the program `words`: at least one word, none with a zero byte. The first is looked
    /// up along PATH (`findProgram`). Raises `std::system_error` if the system refuses or there is
    /// no such program, `RelativeEntryRefused`, and ECANCELED after `killAllChildren`.
    ///
    /// The program is killed when the calling thread ends, so that must outlive this object.
    Child(std::vector<std::string> const & words, ChildSlot slot);

    Child(Child const &) = delete;
    Child & operator=(Child const &) = delete;

    /// Calls `end`, unless that was done before.
    ~Child();

    /// The reading end of its standard output; non-blocking.
    int output() const noexcept { return output_.number(); }

    /// The reading end of its standard error; non-blocking.
    int errors() const noexcept { return errors_.number(); }

    /// A descriptor that `poll` reports as readable once the program has ended.
    int ended() const noexcept { return ended_.number(); }

    /// Kills the program and its process group, reaps it and returns its status, as `waitpid`
    /// does. A program that runs as another user and cannot be killed is left running if it does
    /// not end by itself within 100 ms; its status is then 0.
    int end() noexcept;

private:
    void start(std::vector<std::string> const & words, int output, int errors);
    void closeOutput() noexcept;

    ChildSlot slot_;
    pid_t pid_ = -1;
    OwnedDescriptor output_;
    OwnedDescriptor errors_;
    OwnedDescriptor ended_;
};

} // namespace vxshow::system
