#pragma once

#include <csignal>
#include <optional>
#include <string>

namespace vxshow::system {

/// Keeps the signals that end a process waiting for as long as it lives: for the moments in
/// which a file stands in the folder that nobody wants should the process end. The interrupt
/// is not among them, since it only sets a flag; the alarm that follows it is.
class HeldSignals {
public:
    HeldSignals() noexcept;
    HeldSignals(HeldSignals const &) = delete;
    HeldSignals & operator=(HeldSignals const &) = delete;
    ~HeldSignals();

private:
    sigset_t before_;
};

/// A file that is written whole or not at all: until `commit` what stood under its name
/// stands there, and when there is no `commit`, because something failed, it stays.
///
/// The bytes go into a file without a name in the same folder, which the system drops with the
/// process however that ends; file systems that have none get a hidden file instead. What
/// stood there before passes on its permissions and nothing else; a new file gets those that
/// the user's mask leaves. A symbolic link stays one, and the file behind it is written.
///
/// What is no regular file, a device or a pipe, cannot be replaced and takes the bytes as they
/// come.
class AtomicFile {
public:
    enum class Temporary { unnamed, named };

    /// Opens the file. Raises `std::system_error` as the system refuses: also where a file
    /// stands that the user must not write, though the folder would let it be replaced.
    /// Where `temporary` is named, the file without a name is not tried.
    explicit AtomicFile(std::string const & path, Temporary temporary = Temporary::unnamed);

    AtomicFile(AtomicFile const &) = delete;
    AtomicFile & operator=(AtomicFile const &) = delete;

    /// Drops what was written, unless it was committed.
    ~AtomicFile();

    /// Where to write.
    int descriptor() const noexcept { return descriptor_; }

    /// Has the bytes written to the disk, then puts the file under its name. Raises
    /// `std::system_error`.
    void commit();

private:
    AtomicFile() = default;

    bool openUnnamed(std::string const & folder);
    void openNamed(std::string const & folder);
    void giveName();

    std::string target_;    ///< what is replaced; empty where bytes are taken as they come
    std::string temporary_; ///< the file's name until it has its own; empty while it has none
    std::optional<HeldSignals> held_;
    int descriptor_ = -1;
};

} // namespace vxshow::system
