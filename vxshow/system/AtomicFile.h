#pragma once

#include "vxshow/system/OwnedDescriptor.h"

#include <csignal>
#include <optional>
#include <string>

namespace vxshow::system {

/// Blocks the signals that end a process, for as long as the object lives: while a temporary file
/// has a name, and would be left behind if the process ended. SIGINT is not blocked, since it only
/// sets a flag; the SIGALRM that follows it is.
class BlockedSignals {
public:
    BlockedSignals() noexcept;
    BlockedSignals(BlockedSignals const &) = delete;
    BlockedSignals & operator=(BlockedSignals const &) = delete;
    ~BlockedSignals();

private:
    sigset_t before_;
};

/// A file that is written completely or not at all: until `commit`, the old file stays in place;
/// without a `commit`, because something failed, it stays for good.
///
/// The bytes go to an unnamed file in the same folder, which the system removes if the process
/// ends for any reason; on file systems without unnamed files, to a hidden file. The new file gets
/// the permissions of the old one, but none of its other attributes; if there was none, the umask
/// applies. A symbolic link stays a link, and its target is written.
///
/// A device or a pipe cannot be replaced: it is written to directly.
class AtomicFile {
public:
    enum class Temporary { unnamed, named };

    /// Opens the file. Raises `std::system_error` if the system refuses, and also if the user has
    /// no permission to write the old file, although the folder would allow replacing it.
    /// `Temporary::named` uses a hidden file even if the file system has unnamed ones.
    explicit AtomicFile(std::string const & path, Temporary temporary = Temporary::unnamed);

    AtomicFile(AtomicFile const &) = delete;
    AtomicFile & operator=(AtomicFile const &) = delete;

    /// Discards what was written, unless it was committed.
    ~AtomicFile();

    /// The descriptor to write to.
    int descriptor() const noexcept { return descriptor_.number(); }

    /// Flushes the bytes to the disk, then gives the file its name. Raises `std::system_error`.
    void commit();

private:
    AtomicFile() = default;

    bool openUnnamed(std::string const & folder);
    void openNamed(std::string const & folder);
    void linkTemporary();

    std::string target_;    ///< the file to replace; empty for a device or a pipe
    std::string temporary_; ///< the temporary file's path; empty while it has none
    std::optional<BlockedSignals> blocked_;
    OwnedDescriptor descriptor_;
};

} // namespace vxshow::system
