#include "outfmt/Descriptor.h"

#include "outfmt/Interrupt.h"
#include "outfmt/WriteError.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace [[gnu::visibility("default")]] outfmt {
namespace {

constexpr int pollMilliseconds = 50;

/// At most `limit` bytes, up to a line end if there is one, so that output cut short by
/// an interrupt ends with a whole line.
std::string_view wholeLines(std::string_view bytes, std::size_t limit) {
    if (bytes.size() <= limit) {
        return bytes;
    }
    bytes = bytes.substr(0, limit);
    std::size_t lineEnd = bytes.rfind('\n');
    return lineEnd == std::string_view::npos ? bytes : bytes.substr(0, lineEnd + 1);
}

/// The most bytes that a pipe takes without splitting them, if it takes any: its capacity
/// if it is empty, otherwise PIPE_BUF, which no kernel splits.
std::size_t roomOfPipe(int fd) {
    int waiting = 0;
    int const capacity = ::fcntl(fd, F_GETPIPE_SZ);
    bool const empty = ::ioctl(fd, FIONREAD, &waiting) == 0 && waiting == 0;
    return empty && capacity > PIPE_BUF ? static_cast<std::size_t>(capacity) : PIPE_BUF;
}

} // namespace

Descriptor::Descriptor(int fd) noexcept : fd_(fd), kind_(kindOf(fd)) {}

Descriptor::Kind Descriptor::kindOf(int fd) noexcept {
    struct stat status {};

    if (::fstat(fd, &status) != 0) {
        return Kind::file; // the first write reports what is wrong
    }
    if (S_ISSOCK(status.st_mode)) {
        return Kind::socket;
    }
    if (S_ISFIFO(status.st_mode)) {
        return Kind::pipe;
    }
    return S_ISREG(status.st_mode) || S_ISBLK(status.st_mode) ? Kind::file : Kind::waiting;
}

std::size_t Descriptor::writeSome(std::string_view bytes) {
    for (;;) {
        std::ptrdiff_t written = attempt(bytes);
        if (written >= 0) {
            return static_cast<std::size_t>(written);
        }
        switch (errno) {
        case EINTR:
            checkInterrupt();
            break;
        case EAGAIN:
            awaitRoom();
            break;
        default:
            throw WriteError(fd_, errno);
        }
    }
}

std::ptrdiff_t Descriptor::attempt(std::string_view bytes) {
    switch (kind_) {
    case Kind::socket:
        return ::send(fd_, bytes.data(), bytes.size(), MSG_DONTWAIT);
    case Kind::pipe:
        return attemptOnPipe(bytes);
    case Kind::waiting:
        awaitRoom();
        bytes = wholeLines(bytes, PIPE_BUF);
        break;
    case Kind::file:
        break;
    }
    return ::write(fd_, bytes.data(), bytes.size());
}

std::ptrdiff_t Descriptor::attemptOnPipe(std::string_view bytes) {
    bytes = wholeLines(bytes, roomOfPipe(fd_));
    iovec piece{.iov_base = const_cast<char *>(bytes.data()), .iov_len = bytes.size()};
    std::ptrdiff_t written = ::pwritev2(fd_, &piece, 1, -1, RWF_NOWAIT);
    bool unknown = written < 0 && (errno == EOPNOTSUPP || errno == ENOSYS || errno == EINVAL);
    if (!unknown) {
        return written;
    }
    kind_ = Kind::waiting;
    return attempt(bytes);
}

void Descriptor::awaitRoom() const {
    for (;;) {
        checkInterrupt();
        pollfd asked{.fd = fd_, .events = POLLOUT, .revents = 0};
        int ready = ::poll(&asked, 1, pollMilliseconds);
        if (ready > 0) {
            return; // an error state counts too: the write then names it
        }
        if (ready < 0 && errno != EINTR) {
            throw WriteError(fd_, errno);
        }
    }
}

} // namespace outfmt
