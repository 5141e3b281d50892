#include "vxshow/terminal/TerminalOutput.h"

#include "vxshow/system/DescriptorIo.h"
#include "vxshow/terminal/Say.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <string>
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
    } catch (std::system_error const & error) {
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        throw std::system_error(error.code(), "cannot start a thread for the terminal");
    } catch (...) {
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        throw;
    }
}

} // namespace

TerminalOutput::TerminalOutput(int terminal, std::optional<PagerChoice> pager,
                               std::function<void()> closed, Tables tables, Coloring coloring)
    : terminal_(terminal, std::move(pager), std::move(closed)), tables_(tables), colors_(coloring) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category(),
                                "cannot open a pipe for the terminal");
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
    TerminalText terminalText(tables_);
    std::string text;
    for (;;) {
        auto const [size, error] = system::readSome(reader_.number(), piece);
        if (error) {
            // The writer of the listing would wait for a reader forever.
            fail(ExitStatus::failed, "standard output: " + error.message());
        }
        text.append(piece.data(), size);
        auto const atEnd = size == 0;
        auto const shown = terminalText.take(text) + (atEnd && !text.empty() ? "?" : "");
        if (!error_) {
            error_ = terminal_.write(colors_.take(shown) + (atEnd ? colors_.finish() : ""));
        }
        last_ = shown.empty() ? last_ : shown.back();
        if (atEnd) {
            auto const atLast = terminal_.finish();
            error_ = error_ ? error_ : atLast;
            return;
        }
    }
}

} // namespace vxshow::terminal
