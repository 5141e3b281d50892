#include "tests/live/Labs.h"
#include "tests/live/Listings.h"
#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

/// A pseudo-terminal for a program that is watched.
class Terminal {
public:
    Terminal() : ours_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        EXPECT_EQ(grantpt(ours_), 0);
        EXPECT_EQ(unlockpt(ours_), 0);
        theirs_ = open(ptsname(ours_), O_RDWR | O_NOCTTY | O_CLOEXEC);
        EXPECT_GE(theirs_, 0);
    }

    Terminal(Terminal const &) = delete;
    Terminal & operator=(Terminal const &) = delete;

    ~Terminal() {
        close(theirs_);
        close(ours_);
    }

    int theirs() const noexcept { return theirs_; }

    /// Reads what is drawn until `text` appears in it, for at most a minute, and discards it.
    void waitFor(std::string const & text) {
        std::string drawn;
        waitUntil(text + " to be drawn", [&] {
            pollfd fd{ours_, POLLIN, 0};
            char part[4096];
            if (poll(&fd, 1, 100) > 0) {
                auto const got = read(ours_, part, sizeof(part));
                drawn.append(part, got > 0 ? static_cast<std::size_t>(got) : 0);
            }
            return drawn.find(text) != std::string::npos;
        });
    }

private:
    int ours_;
    int theirs_ = -1;
};

/// A separate server for each test, which changes or stops it.
class Watch : public testing::Test {
protected:
    void SetUp() override {
        VXSHOW_NEEDS_LAB(Lab::database);
        lab_ = std::make_unique<OvsdbLab>();
        lab_->fillSmall();
        setTimeLimit(30);
    }

    /// Sets the time limit of one reading: short for a server that will be stopped, yet enough for
    /// one that answers.
    void setTimeLimit(unsigned seconds) {
        auto const limit = "time_limit = " + std::to_string(seconds);
        fabric_ = folder_.write("fabric.toml",
                                FabricText().database("rack1", lab_->remote(), limit).text());
    }

    OvsdbLab const & lab() const { return *lab_; }

    Words question() const { return {"--fabric", fabric_, "--watch", "1", "mac", "received"}; }

    /// A watch that draws on a terminal.
    std::unique_ptr<Process> drawnOn(Terminal const & terminal) const {
        Process::Setting setting;
        setting.outFd = terminal.theirs();
        setting.inChild = [] { unsetenv("VXSHOW_FABRIC"); };
        return std::make_unique<Process>(question(), setting);
    }

    static void expectEndsWithCtrlC(Process & process) {
        process.signal(SIGINT);
        EXPECT_EQ(process.finish().status, 130);
    }

private:
    Folder folder_;
    std::unique_ptr<OvsdbLab> lab_;
    std::string fabric_;
};

} // namespace

TEST_F(Watch, ChangesAreDrawn) {
    Terminal terminal;
    auto const process = drawnOn(terminal);
    terminal.waitFor("0000.5e00.5301");
    lab().vtepCtl({"add-ucast-local", "red", "00:00:5e:00:53:aa", "10.0.0.1"});
    terminal.waitFor("0000.5e00.53aa");
    expectEndsWithCtrlC(*process);
}

TEST_F(Watch, TheLastGoodTableStaysWhileTheSourceFailsAndTheFailureIsShown) {
    setTimeLimit(5);
    Terminal terminal;
    auto const process = drawnOn(terminal);
    terminal.waitFor("0000.5e00.5301");
    lab().signal("STOP");
    terminal.waitFor("rack1: time limit");
    terminal.waitFor("0000.5e00.5301");
    lab().signal("CONT");
    lab().vtepCtl({"add-ucast-local", "red", "00:00:5e:00:53:aa", "10.0.0.1"});
    terminal.waitFor("0000.5e00.53aa");
    expectEndsWithCtrlC(*process);
}

TEST_F(Watch, InAPipeWholeAnswersFollowEachOther) {
    auto const once = shown({"--ovsdb", lab().remote(), "mac", "received"});
    Process process(question());
    std::string all;
    waitUntil("two answers", [&] {
        all += process.readSome(65536);
        return all.size() >= 2 * once.size();
    });
    EXPECT_EQ(all.substr(0, 2 * once.size()), once + once);
    expectEndsWithCtrlC(process);
}

TEST_F(Watch, AFirstReadingThatFailsIsTriedAgain) {
    lab().signal("STOP");
    setTimeLimit(1);
    Terminal terminal;
    auto const process = drawnOn(terminal);
    terminal.waitFor("rack1: time limit");
    lab().signal("CONT");
    terminal.waitFor("0000.5e00.5301");
    expectEndsWithCtrlC(*process);
}
