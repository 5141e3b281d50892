#include "vxshow/terminal/TerminalOutput.h"

#include "vxshow/text/ControlCharacters.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <span>
#include <string_view>
#include <system_error>

namespace vxshow::terminal {

namespace {

constexpr int page = 4096;

/// Starts `body` on a thread to which no signal of the process goes: they are for the one that
/// writes the listing.
template <class Body>
std::thread withoutSignals(Body && body) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
        std::thread thread(std::forward<Body>(body));
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        return thread;
    } catch (...) {
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        throw;
    }
}

/// Makes the control characters of a piece question marks; `last` is the byte before it.
void withoutControls(std::span<char> piece, char last) {
    for (char & c : piece) {
        bool const obeyed =
            (text::isControl(c) && c != '\n' && c != '\t') || text::isLateControl(last, c);
        last = c;
        c = obeyed ? '?' : c;
    }
}

/// The error number of the system, or 0.
int writeAll(int descriptor, std::string_view text) noexcept {
    while (!text.empty()) {
        auto const written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return errno;
        }
        text.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return 0;
}

} // namespace

TerminalOutput::TerminalOutput(int terminal) : terminal_(terminal) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
    reader_ = system::OwnedDescriptor(ends[0]);
    writer_ = system::OwnedDescriptor(ends[1]);
    // Where that is refused, more is on the way: no harm.
    ::fcntl(ends[1], F_SETPIPE_SZ, page);
    passing_ = withoutSignals([this] { pass(); });
}

TerminalOutput::~TerminalOutput() {
    writer_ = system::OwnedDescriptor();
    if (passing_.joinable()) {
        passing_.join();
    }
}

void TerminalOutput::finish() {
    ::close(writer_.release());
    passing_.join();
    if (error_ != 0) {
        throw std::system_error(error_, std::generic_category());
    }
}

// What the terminal does not take any more is read all the same: nobody is to wait for it.
void TerminalOutput::pass() noexcept {
    std::array<char, page> piece;
    char last = '\0';
    for (;;) {
        auto const got = ::read(reader_.number(), piece.data(), piece.size());
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return;
        }
        auto const size = static_cast<std::size_t>(got);
        char const next = piece[size - 1];
        withoutControls({piece.data(), size}, last);
        last = next;
        if (error_ == 0) {
            error_ = writeAll(terminal_, {piece.data(), size});
        }
    }
}

} // namespace vxshow::terminal
