#include "vxshow/system/AtomicFile.h"

#include "outfmt/Interrupt.h"
#include "vxshow/system/Repeat.h"
#include "vxshow/system/SystemError.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace vxshow::system {

namespace {

constexpr mode_t newFileMode = 0666; // the umask still applies
constexpr mode_t permissionBits = 0777;

void require(bool done) {
    if (!done) {
        throwSystemError();
    }
}

/// Opens a device or a pipe. An interrupt ends the wait for the reader of a pipe.
OwnedDescriptor openInPlace(std::string const & path) {
    for (;;) {
        OwnedDescriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
        if (file.isOpen()) {
            return file;
        }
        if (errno != EINTR) {
            throwSystemError();
        }
        outfmt::checkInterrupt();
    }
}

std::string folderOf(std::string const & path) {
    auto const slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

/// Calls `create(path)` with paths in `folder` until one does not exist yet, and returns that.
template <class Create>
std::string createUnderUniqueName(std::string const & folder, Create && create) {
    std::random_device random;
    for (;;) {
        char name[32];
        std::snprintf(name, sizeof(name), "/.vxshow-%08x", random());
        std::string path = folder + name;
        if (create(path)) {
            return path;
        }
        if (errno != EEXIST) {
            throwSystemError();
        }
    }
}

/// The path at which a new file would be created: dangling links are followed as well.
std::string followLinks(std::string const & path) {
    constexpr unsigned maxLinks = 40; // as many as Linux follows
    std::filesystem::path followed(path);
    for (unsigned count = 0; count < maxLinks; ++count) {
        std::error_code notALink;
        auto const target = std::filesystem::read_symlink(followed, notALink);
        if (notALink) {
            break;
        }
        followed = followed.parent_path() / target;
    }
    return followed.string();
}

void refuseSeveralNames(struct stat const & old) {
    if (old.st_nlink > 1) {
        throw ReplacementRefused("the file has " + std::to_string(old.st_nlink) +
                                 " names (hard links), and only this one would get the new "
                                 "content");
    }
}

/// Gives the file the owner and the group of `old`, as far as the system allows it. Returns whether
/// it has both.
bool takeOwnership(int descriptor, struct stat const & old) {
    struct stat created {};

    require(::fstat(descriptor, &created) == 0);
    bool const group = created.st_gid == old.st_gid ||
                       ::fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) == 0;
    bool const owner = created.st_uid == old.st_uid ||
                       ::fchown(descriptor, old.st_uid, static_cast<gid_t>(-1)) == 0;
    return group && owner;
}

std::string procLink(OwnedDescriptor const & file) {
    return "/proc/self/fd/" + std::to_string(file.number());
}

} // namespace

BlockedSignals::BlockedSignals() noexcept {
    sigset_t ending;
    sigemptyset(&ending);
    for (int const signal : {SIGALRM, SIGHUP, SIGQUIT, SIGTERM}) {
        sigaddset(&ending, signal);
    }
    pthread_sigmask(SIG_BLOCK, &ending, &before_);
}

BlockedSignals::~BlockedSignals() {
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

// Delegates, so that the destructor cleans up if this constructor throws.
AtomicFile::AtomicFile(std::string const & path, Temporary temporary, OldFile old) : AtomicFile() {
    struct stat status {};

    bool const exists = ::stat(path.c_str(), &status) == 0;
    require(exists || errno == ENOENT);
    if (exists && !S_ISREG(status.st_mode)) {
        descriptor_ = openInPlace(path);
        return;
    }
    target_ = exists ? std::filesystem::canonical(path).string() : followLinks(path);
    require(!exists || ::faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) == 0);
    if (exists && old == OldFile::keep) {
        refuseSeveralNames(status);
    }
    auto const folder = folderOf(target_);
    if (temporary == Temporary::named || !openUnnamed(folder)) {
        openNamed(folder);
    }
    if (!exists) {
        return;
    }
    // The mode comes last: the system can clear some of its bits when the owner changes.
    if (!takeOwnership(descriptor(), status) && old == OldFile::keep) {
        throw ReplacementRefused("the owner and the group of the file, " +
                                 std::to_string(status.st_uid) + " and " +
                                 std::to_string(status.st_gid) + ", cannot be kept");
    }
    require(::fchmod(descriptor(), status.st_mode & permissionBits) == 0);
}

AtomicFile::~AtomicFile() {
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

/// Returns false if the file system or the machine does not support unnamed files.
bool AtomicFile::openUnnamed(std::string const & folder) {
    OwnedDescriptor file(repeatInterrupted(
        [&] { return ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, newFileMode); }));
    if (!file.isOpen()) {
        require(errno == EOPNOTSUPP || errno == EISDIR);
        return false;
    }
    // Without /proc the file could not be given a name later.
    if (::access(procLink(file).c_str(), F_OK) != 0) {
        return false;
    }
    descriptor_ = std::move(file);
    return true;
}

void AtomicFile::openNamed(std::string const & folder) {
    blocked_.emplace();
    temporary_ = createUnderUniqueName(folder, [&](std::string const & name) {
        descriptor_ = OwnedDescriptor(repeatInterrupted([&] {
            return ::open(name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, newFileMode);
        }));
        return descriptor_.isOpen();
    });
    leftover_.remember(temporary_.c_str());
}

void AtomicFile::linkTemporary() {
    blocked_.emplace();
    auto const self = procLink(descriptor_);
    temporary_ = createUnderUniqueName(folderOf(target_), [&](std::string const & name) {
        return ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    });
    leftover_.remember(temporary_.c_str());
}

void AtomicFile::commit() {
    if (target_.empty()) {
        return;
    }
    require(repeatInterrupted([&] { return ::fsync(descriptor()); }) == 0);
    // Only a file with a name can replace another one.
    if (temporary_.empty()) {
        linkTemporary();
    }
    require(::rename(temporary_.c_str(), target_.c_str()) == 0);
    leftover_.forget();
    temporary_.clear();
    blocked_.reset();
}

} // namespace vxshow::system
