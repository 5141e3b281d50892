#pragma once

#include "outfmt/Interrupt.h"
#include "outfmt/Printer.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>
#include <utility>

/// Real descriptors for the tests; the kernel is not faked.
namespace outfmt::test {

inline constexpr unsigned textFormat = 1;
inline constexpr unsigned compactFormat = 2;
inline constexpr unsigned indentedFormat = 3;

/// An open descriptor, closed by the destructor.
class Fd {
public:
    Fd() = default;

    explicit Fd(int fd) : fd_(fd) {
        if (fd < 0) {
            throw std::runtime_error("no descriptor");
        }
    }

    Fd(Fd && other) noexcept : fd_(std::exchange(other.fd_, -1)) {}

    Fd & operator=(Fd && other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }

    ~Fd() { close(); }

    void close() {
        if (fd_ >= 0) {
            ::close(std::exchange(fd_, -1));
        }
    }

    int get() const { return fd_; }

private:
    int fd_ = -1;
};

inline std::string readAll(int fd) {
    std::string all;
    char buffer[65536];
    for (ssize_t count = 0; (count = ::read(fd, buffer, sizeof buffer)) != 0;) {
        if (count > 0) {
            all.append(buffer, static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            break; // a pseudo terminal ends with EIO
        }
    }
    return all;
}

/// A file without a name.
class File {
public:
    File() : fd_(::memfd_create("outfmt-test", MFD_CLOEXEC)) {}

    int fd() const { return fd_.get(); }

    std::string content() const {
        ::lseek(fd(), 0, SEEK_SET);
        return readAll(fd());
    }

private:
    Fd fd_;
};

struct Pipe {
    Pipe() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
        reader = Fd(ends[0]);
        writer = Fd(ends[1]);
    }

    Fd reader;
    Fd writer;
};

/// Writes to `fd` until it is full, and returns the number of bytes written.
inline std::size_t fillUp(int fd) {
    int flags = ::fcntl(fd, F_GETFL);
    ::fcntl(fd, F_SETFL, flags | O_NONBLOCK);
    std::size_t filled = 0;
    for (std::size_t piece : {4096U, 1U}) {
        std::string bytes(piece, '.');
        for (ssize_t count = 0; (count = ::write(fd, bytes.data(), piece)) > 0;) {
            filled += static_cast<std::size_t>(count);
        }
    }
    ::fcntl(fd, F_SETFL, flags);
    return filled;
}

/// The text that `print` writes to a file in this format.
template <class Print>
std::string printed(unsigned format, Print print) {
    File file;
    Printer printer(file.fd(), format, true, false, true, 0);
    print(printer);
    printer.flush();
    return file.content();
}

/// The interrupt flag is process-wide: a test that sets it clears it at the end.
struct CleanInterruptFlag {
    CleanInterruptFlag() { clearInterrupt(); }

    CleanInterruptFlag(CleanInterruptFlag const &) = delete;
    CleanInterruptFlag & operator=(CleanInterruptFlag const &) = delete;

    ~CleanInterruptFlag() { clearInterrupt(); }
};

/// A signal's disposition during a test.
class SignalAction {
public:
    SignalAction(int signal, void (*handler)(int), int flags = 0) : signal_(signal) {
        struct sigaction action {};

        action.sa_handler = handler;
        action.sa_flags = flags;
        ::sigaction(signal_, &action, &before_);
    }

    SignalAction(SignalAction const &) = delete;
    SignalAction & operator=(SignalAction const &) = delete;

    ~SignalAction() { ::sigaction(signal_, &before_, nullptr); }

private:
    int signal_;

    struct sigaction before_ {};
};

} // namespace outfmt::test
