#include "vxshow/system/Child.h"

#include "tests/unit/vxshow/system/Programs.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace vxshow::test {

namespace {

using namespace system;
using namespace std::chrono_literals;

std::string outputOf(std::vector<std::string> const & words) {
    return std::string(exited(words).output.text());
}

/// Restores the action of a signal at the end.
class Effect {
public:
    Effect(int signal, void (*effect)(int)) : signal_(signal) {
        struct sigaction action {};

        action.sa_handler = effect;
        sigaction(signal, &action, &before_);
    }

    Effect(Effect const &) = delete;
    Effect & operator=(Effect const &) = delete;

    ~Effect() { sigaction(signal_, &before_, nullptr); }

private:
    int signal_;

    struct sigaction before_ {};
};

void (*effectOf(int signal))(int) {
    struct sigaction action {};

    sigaction(signal, nullptr, &action);
    return action.sa_handler;
}

void ignoreIt(int) {}

TEST(Child, StandardInputIsEmpty) {
    EXPECT_EQ(outputOf({"cat"}), "");
    EXPECT_EQ(outputOf({"readlink", "/proc/self/fd/0"}), "/dev/null\n");
}

TEST(Child, InheritsTheEnvironment) {
    setenv("VXSHOW_TEST_VALUE", "of the environment", 1);
    EXPECT_EQ(outputOf({"printenv", "VXSHOW_TEST_VALUE"}), "of the environment\n");
    unsetenv("VXSHOW_TEST_VALUE");
}

TEST(Child, InheritsTheWorkingFolder) {
    char folder[4096];
    ASSERT_TRUE(getcwd(folder, sizeof(folder)));
    EXPECT_EQ(outputOf({"pwd", "-P"}), std::string(folder) + "\n");
}

TEST(Child, InheritsNoDescriptors) {
    int const inherited = fcntl(STDERR_FILENO, F_DUPFD, 50);
    ASSERT_GE(inherited, 50);
    EXPECT_EQ(outputOf({"ls", "/proc/self/fd"}), "0\n1\n2\n3\n"); // the last is the folder itself
    close(inherited);
}

TEST(Child, SignalsHaveTheirDefaultActions) {
    Effect const pipe(SIGPIPE, SIG_IGN);
    Effect const interrupt(SIGINT, SIG_IGN);
    Effect const user(SIGUSR1, ignoreIt);
    sigset_t held;
    sigset_t before;
    sigemptyset(&held);
    sigaddset(&held, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &held, &before);
    auto const signals = outputOf({"grep", "-E", "^Sig(Blk|Ign)", "/proc/self/status"});
    sigset_t after;
    pthread_sigmask(SIG_SETMASK, &before, &after);
    EXPECT_EQ(signals, "SigBlk:\t0000000000000000\n"
                       "SigIgn:\t0000000000000000\n");
    EXPECT_TRUE(sigismember(&after, SIGTERM));
    EXPECT_FALSE(sigismember(&after, SIGINT));
    EXPECT_EQ(effectOf(SIGPIPE), SIG_IGN);
    EXPECT_EQ(effectOf(SIGINT), SIG_IGN);
    EXPECT_EQ(effectOf(SIGUSR1), ignoreIt);
}

TEST(Child, LeadsASessionWithoutATerminal) {
    EXPECT_EQ(outputOf({"python3", "-c",
                        "import os\n"
                        "print(os.getpid() == os.getpgid(0) == os.getsid(0))\n"
                        "try:\n"
                        "    open('/dev/tty')\n"
                        "except OSError:\n"
                        "    print('no terminal')\n"}),
              "True\nno terminal\n");
}

TEST(Child, IsKilledWhenTheParentIs) {
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    pid_t const runner = fork();
    if (runner == 0) {
        run(shell("echo $$; exec sleep 1000"), patient(), [&](std::string_view printed) {
            static_cast<void>(!write(ends[1], printed.data(), printed.size()));
        });
        _exit(0);
    }
    char printed[32] = {};
    EXPECT_GT(read(ends[0], printed, sizeof(printed) - 1), 0);
    kill(runner, SIGKILL);
    waitpid(runner, nullptr, 0);
    EXPECT_TRUE(diesSoon(std::atoi(printed)));
    close(ends[0]);
    close(ends[1]);
}

TEST(Child, HasStandardStreamsEvenIfTheParentHasNone) {
    auto const runWithoutStreams = [] {
        for (int const stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            close(stream);
        }
        auto const it = exited(shell("cat; echo out; echo err >&2; ls /proc/self/fd"));
        bool const right =
            it.status == 0 && it.output.text() == "out\n0\n1\n2\n3\n" && it.errors == "err\n";
        std::_Exit(right ? 0 : 1);
    };
    EXPECT_EXIT(runWithoutStreams(), testing::ExitedWithCode(0), "");
}

TEST(Child, StatusIsKeptEvenIfTheParentStartedWithSigchldIgnored) {
    Effect const child(SIGCHLD, SIG_IGN);
    EXPECT_EQ(exited(shell("exit 9")).status, 9);
}

/// Takes all descriptors that this process can open, in the order of their numbers.
std::vector<int> takeAllDescriptors() {
    // The machine's own limit can be a thousand million.
    rlimit const few{64, 64};
    setrlimit(RLIMIT_NOFILE, &few);
    std::vector<int> taken;
    for (int next = dup(STDERR_FILENO); next >= 0; next = dup(STDERR_FILENO)) {
        taken.push_back(next);
    }
    return taken;
}

/// Ends this process, with status 0 if a run with `left` free descriptors reports that there are
/// too few and leaves all of them free.
[[noreturn]] void exitAfterRunWith(std::size_t left) {
    auto const taken = takeAllDescriptors();
    for (std::size_t index = 0; index < left; ++index) {
        close(taken.at(index));
    }
    auto const answer = run({"true"}, patient());
    auto const * const notStarted = std::get_if<NotStarted>(&answer);
    bool const right =
        notStarted && notStarted->error == EMFILE && takeAllDescriptors().size() == left;
    std::_Exit(right ? 0 : 1);
}

// The pipes, /dev/null and the descriptor that reports the end are opened one after the other, so
// each number fails at another step. With fewer than two, the sanitizers cannot handle the
// exception, for which they open a pipe of their own.
TEST(Child, TooFewDescriptorsAreTheSystemsError) {
    for (std::size_t const left : {2U, 3U, 4U, 5U}) {
        EXPECT_EXIT(exitAfterRunWith(left), testing::ExitedWithCode(0), "") << left;
    }
}

/// Leaves this process seven descriptors: one more than a program takes while it starts. A running
/// program keeps three of them, so no second one can start.
void leaveDescriptorsForOneProgram() {
    auto const taken = takeAllDescriptors();
    for (std::size_t index = 0; index < 7; ++index) {
        close(taken.at(index));
    }
}

/// The result of a run with this time limit while `script` is running. `script` must print
/// something first.
RunResult runBeside(
    std::vector<std::string> const & script, std::chrono::milliseconds limit,
    std::function<void()> const & atItsEnd = [] {}) {
    RunResult answer = Interrupted{};
    std::jthread thread;
    run(script, patient(), [&](std::string_view) {
        thread = std::jthread([&] {
            answer = run({"true"}, {Clock::now() + limit, 1000});
            atItsEnd();
        });
    });
    thread.join();
    return answer;
}

TEST(Child, TooFewDescriptorsWhileAnotherProgramRunsAreWaitedFor) {
    auto const waits = [] {
        leaveDescriptorsForOneProgram();
        auto const answer = runBeside(shell("echo; exec sleep 0.3"), 2min);
        std::_Exit(std::holds_alternative<Exited>(answer) ? 0 : 1);
    };
    EXPECT_EXIT(waits(), testing::ExitedWithCode(0), "");
}

TEST(Child, TooFewDescriptorsWhileAnotherProgramEndsAreWaitedFor) {
    auto const waits = [] {
        leaveDescriptorsForOneProgram();
        for (int round = 0; round < 300; ++round) {
            if (!std::holds_alternative<Exited>(runBeside(shell("echo; exec sleep 0.003"), 2min))) {
                std::_Exit(1);
            }
        }
        std::_Exit(0);
    };
    EXPECT_EXIT(waits(), testing::ExitedWithCode(0), "");
}

TEST(Child, TooFewDescriptorsUntilTheTimeLimitAreTheSystemsError) {
    auto const waits = [] {
        Folder const folder;
        leaveDescriptorsForOneProgram();
        auto const start = Clock::now();
        auto const answer =
            runBeside(shell("echo; until [ -e \"$1\" ]; do sleep 0.01; done", {folder.path("go")}),
                      200ms, [&] { folder.put("go", "", 0600); });
        auto const * const notStarted = std::get_if<NotStarted>(&answer);
        bool const right =
            notStarted && notStarted->error == EMFILE && Clock::now() - start >= 200ms;
        std::filesystem::remove_all(folder.path());
        std::_Exit(right ? 0 : 1);
    };
    EXPECT_EXIT(waits(), testing::ExitedWithCode(0), "");
}

} // namespace

} // namespace vxshow::test
