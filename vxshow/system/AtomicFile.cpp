#include "vxshow/system/AtomicFile.h"

#include "outfmt/Interrupt.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vxshow::system {

namespace {

constexpr mode_t everybody = 0666; // less what the mask takes
constexpr mode_t permissions = 0777;

[[noreturn]] void throwErrno() {
    throw std::system_error(errno, std::generic_category());
}

void require(bool done) {
    if (!done) {
        throwErrno();
    }
}

/// Opens a device or a pipe: one that waits for its reader is given up on interrupt.
int openInPlace(std::string const & path) {
    for (;;) {
        int const descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
        if (descriptor >= 0) {
            return descriptor;
        }
        if (errno != EINTR) {
            throwErrno();
        }
        outfmt::checkInterrupt();
    }
}

std::string folderOf(std::string const & path) {
    auto const slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

/// Has `make(name)` make something under a name of `folder` that nothing has yet, and returns
/// the name.
template <class Make>
std::string madeUnderNewName(std::string const & folder, Make && make) {
    std::random_device random;
    for (;;) {
        char name[32];
        std::snprintf(name, sizeof(name), "/.vxshow-%08x", random());
        std::string path = folder + name;
        if (make(path)) {
            return path;
        }
        if (errno != EEXIST) {
            throwErrno();
        }
    }
}

/// Where a file would come to stand: links that lead to nothing yet are followed as well.
std::string behindLinks(std::string const & path) {
    constexpr unsigned mostLinks = 40; // as many as Linux follows
    std::filesystem::path behind(path);
    for (unsigned followed = 0; followed < mostLinks; ++followed) {
        std::error_code none;
        auto const target = std::filesystem::read_symlink(behind, none);
        if (none) {
            break;
        }
        behind = behind.parent_path() / target;
    }
    return behind.string();
}

std::string linkOf(int descriptor) {
    return "/proc/self/fd/" + std::to_string(descriptor);
}

} // namespace

HeldSignals::HeldSignals() noexcept {
    sigset_t ending;
    sigemptyset(&ending);
    for (int const signal : {SIGALRM, SIGHUP, SIGQUIT, SIGTERM}) {
        sigaddset(&ending, signal);
    }
    pthread_sigmask(SIG_BLOCK, &ending, &before_);
}

HeldSignals::~HeldSignals() {
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

// Once the other constructor is through, the destructor clears up after this one.
AtomicFile::AtomicFile(std::string const & path, Temporary temporary) : AtomicFile() {
    struct stat old {};

    bool const there = ::stat(path.c_str(), &old) == 0;
    require(there || errno == ENOENT);
    if (there && !S_ISREG(old.st_mode)) {
        descriptor_ = openInPlace(path);
        return;
    }
    target_ = there ? std::filesystem::canonical(path).string() : behindLinks(path);
    require(!there || ::faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) == 0);
    auto const folder = folderOf(target_);
    if (temporary == Temporary::named || !openUnnamed(folder)) {
        openNamed(folder);
    }
    require(!there || ::fchmod(descriptor_, old.st_mode & permissions) == 0);
}

AtomicFile::~AtomicFile() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
    if (!temporary_.empty()) {
        ::unlink(temporary_.c_str());
    }
}

/// False where the file system, or the machine, has no such files.
bool AtomicFile::openUnnamed(std::string const & folder) {
    descriptor_ = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, everybody);
    if (descriptor_ < 0) {
        require(errno == EOPNOTSUPP || errno == EISDIR);
        return false;
    }
    if (::access(linkOf(descriptor_).c_str(), F_OK) != 0) {
        ::close(descriptor_);
        descriptor_ = -1;
        return false;
    }
    return true;
}

void AtomicFile::openNamed(std::string const & folder) {
    held_.emplace();
    temporary_ = madeUnderNewName(folder, [&](std::string const & name) {
        descriptor_ = ::open(name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, everybody);
        return descriptor_ >= 0;
    });
}

void AtomicFile::giveName() {
    held_.emplace();
    auto const self = linkOf(descriptor_);
    temporary_ = madeUnderNewName(folderOf(target_), [&](std::string const & name) {
        return ::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    });
}

void AtomicFile::commit() {
    if (target_.empty()) {
        return;
    }
    require(::fsync(descriptor_) == 0);
    // A file that is put in the place of another needs a name first.
    if (temporary_.empty()) {
        giveName();
    }
    require(::rename(temporary_.c_str(), target_.c_str()) == 0);
    temporary_.clear();
    held_.reset();
}

} // namespace vxshow::system
