#include "vxshow/terminal/TerminalOutput.h"

#include "vxshow/system/DescriptorIo.h"
#include "vxshow/terminal/ShownCharacter.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace vxshow::terminal {

namespace {

constexpr int page = 4096;

/// Starts `body` on a thread that blocks all signals: they are for the thread that writes the
/// listing.
template <class Body>
std::thread startWithoutSignals(Body && body) {
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

/// What a terminal shows for the characters of `text`, which are removed from it. One that can
/// continue in the next piece stays in `text`.
std::string takeShown(std::string & text) {
    std::string shown;
    shown.reserve(text.size());
    std::string_view rest = text;
    while (!rest.empty()) {
        auto const next = firstCharacter(rest);
        if (!next.valid && next.length == rest.size()) {
            break;
        }
        bool const keep = rest[0] == '\n' || rest[0] == '\t';
        shown.append(keep ? rest.substr(0, 1) : next.shown);
        rest.remove_prefix(next.length);
    }
    text.erase(0, text.size() - rest.size());
    return shown;
}

} // namespace

TerminalOutput::TerminalOutput(int terminal) : terminal_(terminal) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category());
    }
    reader_ = system::OwnedDescriptor(ends[0]);
    writer_ = system::OwnedDescriptor(ends[1]);
    // If this is refused, the pipe holds more, which does no harm.
    ::fcntl(ends[1], F_SETPIPE_SZ, page);
    copying_ = startWithoutSignals([this] { copyToTerminal(); });
}

TerminalOutput::~TerminalOutput() {
    writer_.close();
    if (copying_.joinable()) {
        copying_.join();
    }
}

void TerminalOutput::finish() {
    writer_.close();
    copying_.join();
    if (error_) {
        throw std::system_error(error_);
    }
}

// Goes on reading when the terminal takes no more, so that the writer of the listing never blocks.
void TerminalOutput::copyToTerminal() noexcept {
    std::array<char, page> piece;
    std::string text;
    for (;;) {
        auto const size = system::readSome(reader_.number(), piece).bytes;
        text.append(piece.data(), size);
        auto const atEnd = size == 0;
        auto const shown = takeShown(text) + (atEnd && !text.empty() ? "?" : "");
        if (!error_) {
            error_ = system::writeAll(terminal_, shown);
        }
        last_ = shown.empty() ? last_ : shown.back();
        if (atEnd) {
            return;
        }
    }
}

} // namespace vxshow::terminal
