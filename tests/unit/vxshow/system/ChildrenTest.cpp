#include "vxshow/system/Children.h"

#include "tests/unit/vxshow/system/Programs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace vxshow::test {

namespace {

using namespace system;

// After `killAllChildren` a process cannot start programs any more, so each of these tests runs in
// a process of its own, which reports through this pipe.
class Children : public testing::Test {
protected:
    Children() { EXPECT_EQ(pipe2(ends_, O_CLOEXEC | O_NONBLOCK), 0); }

    ~Children() override {
        close(ends_[0]);
        close(ends_[1]);
    }

    void tell(std::string_view text) const {
        static_cast<void>(!write(ends_[1], text.data(), text.size()));
    }

    std::string told() const {
        char text[4096];
        auto const got = read(ends_[0], text, sizeof(text));
        return {text, static_cast<std::size_t>(std::max<ssize_t>(got, 0))};
    }

    /// Runs a program that prints its process id and that of a child, and then does not end.
    RunResult runForever() {
        return run(shell("sleep 1000 & echo $$ $!; wait"), patient(), [&](std::string_view text) {
            tell(text);
            ++running_;
        });
    }

    void waitUntilRunning(int count) const {
        if (!soon([&] { return running_ == count; })) {
            std::_Exit(2);
        }
    }

    void expectAllToldDie() const {
        std::istringstream numbers(told());
        pid_t number = 0;
        int count = 0;
        for (; numbers >> number; ++count) {
            EXPECT_TRUE(diesSoon(number)) << number;
        }
        EXPECT_GE(count, 2);
    }

    /// Ends the process by `signal` while a program is running.
    void raiseWhileRunning(int signal) {
        rlimit const none{0, 0};
        setrlimit(RLIMIT_CORE, &none);
        killChildrenOnTermination();
        std::thread([this] {
            runForever();
            // The result of the run does not matter: the signal is about to end the process.
            for (;;) {
                pause();
            }
        }).detach();
        waitUntilRunning(1);
        kill(getpid(), signal);
        for (;;) {
            pause();
        }
    }

    std::atomic<int> running_ = 0;

private:
    int ends_[2];
};

TEST_F(Children, KillingAllEndsARunInAnotherThread) {
    auto const killWhileRunning = [&] {
        std::thread killer([&] {
            waitUntilRunning(1);
            killAllChildren();
        });
        auto const answer = runForever();
        killer.join();
        std::_Exit(std::holds_alternative<Interrupted>(answer) ? 0 : 1);
    };
    EXPECT_EXIT(killWhileRunning(), testing::ExitedWithCode(0), "");
    expectAllToldDie();
}

TEST_F(Children, AfterKillingAllNothingStarts) {
    Folder const folder;
    auto const runAfterwards = [&] {
        killAllChildren();
        auto const answer = run({"touch", folder.path("run")}, patient());
        std::_Exit(std::holds_alternative<Interrupted>(answer) ? 0 : 1);
    };
    EXPECT_EXIT(runAfterwards(), testing::ExitedWithCode(0), "");
    EXPECT_NE(access(folder.path("run").c_str(), F_OK), 0);
}

TEST_F(Children, KillingAllWhileManyStartLeavesNone) {
    auto const killWhileStarting = [&] {
        std::atomic<int> interrupted = 0;
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 8; ++thread) {
            threads.emplace_back([&] {
                while (!std::holds_alternative<Interrupted>(run({"true"}, patient()))) {
                    ++running_;
                }
                ++interrupted;
            });
            threads.emplace_back([&] {
                if (std::holds_alternative<Interrupted>(runForever())) {
                    ++interrupted;
                }
            });
        }
        soon([&] { return running_ > 20; });
        killAllChildren();
        killAllChildren();
        for (auto & thread : threads) {
            thread.join();
        }
        std::_Exit(interrupted == 16 ? 0 : 1);
    };
    EXPECT_EXIT(killWhileStarting(), testing::ExitedWithCode(0), "");
    expectAllToldDie();
}

TEST_F(Children, SigtermKillsThemAndThenEndsTheProcess) {
    EXPECT_EXIT(raiseWhileRunning(SIGTERM), testing::KilledBySignal(SIGTERM), "");
    expectAllToldDie();
}

TEST_F(Children, SighupKillsThemAndThenEndsTheProcess) {
    EXPECT_EXIT(raiseWhileRunning(SIGHUP), testing::KilledBySignal(SIGHUP), "");
    expectAllToldDie();
}

TEST_F(Children, SigquitKillsThemAndThenEndsTheProcess) {
    EXPECT_EXIT(raiseWhileRunning(SIGQUIT), testing::KilledBySignal(SIGQUIT), "");
    expectAllToldDie();
}

TEST_F(Children, ASignalThatWasIgnoredStaysIgnored) {
    auto const hangUp = [] {
        std::signal(SIGHUP, SIG_IGN);
        killChildrenOnTermination();
        std::raise(SIGHUP);
        auto const answer = run({"true"}, patient());
        std::_Exit(std::holds_alternative<Exited>(answer) ? 0 : 1);
    };
    EXPECT_EXIT(hangUp(), testing::ExitedWithCode(0), "");
}

} // namespace

} // namespace vxshow::test
