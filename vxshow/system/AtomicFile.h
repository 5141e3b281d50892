#pragma once

#include "vxshow/system/Leftover.h"
#include "vxshow/system/OwnedDescriptor.h"

#include <csignal>
#include <optional>
#include <stdexcept>
#include <string>
#include <sys/types.h>

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

/// Replacing the old file would take something from it. The message says what, in printable ASCII,
/// without the file's name.
class ReplacementRefused : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A file that is written completely or not at all: until `commit`, the old file stays in place;
/// without a `commit`, because something failed, it stays for good.
///
/// The bytes go to an unnamed file in the same folder, which the system removes if the process
/// ends for any reason; on file systems without unnamed files, to a hidden file, which is a
/// `Leftover`. The new file gets the owner, the group and the permissions of the old one, but none
/// of its other attributes; if there was none, the umask applies. A symbolic link stays a link, and
/// its target is written.
///
/// A device or a pipe cannot be replaced: it is written to directly.
class AtomicFile {
public:
    enum class Temporary { unnamed, named };

    /// What happens if the owner or the group of the old file cannot be kept, or if it has several
    /// names (hard links), of which only one would become the new file: `keep` refuses to replace
    /// it, `replace` does so all the same.
    enum class OldFile { keep, replace };

    /// Opens the file. Raises `std::system_error` if the system refuses, and also if the user has
    /// no permission to write the old file, although the folder would allow replacing it.
    /// Raises `ReplacementRefused` as `old` says. `Temporary::named` uses a hidden file even if the
    /// file system has unnamed ones.
    explicit AtomicFile(std::string const & path, Temporary temporary = Temporary::unnamed,
                        OldFile old = OldFile::keep);

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
    Leftover leftover_;     ///< that path
    std::optional<BlockedSignals> blocked_;
    OwnedDescriptor descriptor_;
};

} // namespace vxshow::system
