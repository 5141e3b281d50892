#include "vxshow/terminal/ProgressLine.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fcntl.h>
#include <pty.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace vxshow::test {

using namespace terminal;

namespace {

using namespace std::chrono_literals;

/// A terminal, and what has been written to it.
class Terminal {
public:
    Terminal() {
        EXPECT_EQ(openpty(&screen_, &descriptor_, nullptr, nullptr, nullptr), 0);
        EXPECT_EQ(fcntl(screen_, F_SETFL, O_NONBLOCK), 0);
    }

    Terminal(Terminal const &) = delete;
    Terminal & operator=(Terminal const &) = delete;

    ~Terminal() {
        close(screen_);
        close(descriptor_);
    }

    int descriptor() const { return descriptor_; }

    std::string written() {
        char some[4096];
        for (;;) {
            auto const got = read(screen_, some, sizeof some);
            if (got <= 0) {
                return written_;
            }
            written_.append(some, static_cast<std::size_t>(got));
        }
    }

private:
    int screen_ = -1;
    int descriptor_ = -1;
    std::string written_;
};

/// Shows the progress until something is on the terminal, for a minute at most.
std::string shownAtLast(Terminal & terminal, ProgressLine & line,
                        state::Progress const & progress) {
    for (auto const end = std::chrono::steady_clock::now() + 60s;
         std::chrono::steady_clock::now() < end;) {
        line.show(progress);
        if (auto const text = terminal.written(); !text.empty()) {
            return text;
        }
        std::this_thread::sleep_for(10ms);
    }
    return "";
}

} // namespace

TEST(ProgressLine, ShowsSourcesAndRowsAndIsErasedAtTheEnd) {
    Terminal terminal;
    {
        ProgressLine line(terminal.descriptor());
        EXPECT_EQ(shownAtLast(terminal, line, {.done = 2, .sources = 3, .rows = 12345}),
                  "\r\x1b[K2 of 3 sources read, 12345 rows");
    }
    EXPECT_EQ(terminal.written(), "\r\x1b[K2 of 3 sources read, 12345 rows\r\x1b[K");
}

TEST(ProgressLine, OfOneSource) {
    Terminal terminal;
    ProgressLine line(terminal.descriptor());
    EXPECT_EQ(shownAtLast(terminal, line, {.sources = 1}), "\r\x1b[K0 of 1 source read, 0 rows");
}

TEST(ProgressLine, IsNotDrawnForLessThanHalfASecond) {
    Terminal terminal;
    auto const start = std::chrono::steady_clock::now();
    {
        ProgressLine line(terminal.descriptor());
        line.show({.sources = 1});
    }
    // On a stalled machine the half second can be over.
    if (std::chrono::steady_clock::now() - start < 500ms) {
        EXPECT_EQ(terminal.written(), "");
    }
}

TEST(ProgressLine, IsShownOnlyOnATerminal) {
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
    {
        ProgressLine line(ends[1]);
        std::this_thread::sleep_for(501ms);
        line.show({.sources = 1});
    }
    char byte = 0;
    EXPECT_EQ(read(ends[0], &byte, 1), -1);
    close(ends[0]);
    close(ends[1]);
}

} // namespace vxshow::test
