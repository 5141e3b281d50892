#include "vxshow/system/Run.h"

#include "tests/unit/vxshow/system/Programs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <sys/time.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

namespace vxshow::test {

namespace {

using namespace system;

using Words = std::vector<std::string>;

int errorOf(Words const & words) {
    auto const answer = run(words, patient());
    auto const * const notStarted = std::get_if<NotStarted>(&answer);
    return notStarted ? notStarted->error : -1;
}

template <class Expected>
bool is(RunResult const & answer) {
    return std::holds_alternative<Expected>(answer);
}

RunResult within(std::chrono::milliseconds time, std::string const & script) {
    return run(shell(script), {Clock::now() + time, 1000});
}

RunResult limitedTo(std::size_t bytes, std::string const & script) {
    return run(shell(script), {patient().end, bytes});
}

std::size_t openDescriptors() {
    std::filesystem::directory_iterator const all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

/// A copy of setpriv that runs as root whichever user starts it, as sudo does.
class RootsProgram {
public:
    RootsProgram() {
        EXPECT_TRUE(mkdtemp(folder_.data()));
        std::filesystem::permissions(folder_, std::filesystem::perms(0755));
        std::filesystem::copy_file("/usr/bin/setpriv", path());
        std::filesystem::permissions(path(), std::filesystem::perms(04755));
    }

    RootsProgram(RootsProgram const &) = delete;
    RootsProgram & operator=(RootsProgram const &) = delete;

    ~RootsProgram() { std::filesystem::remove_all(folder_); }

    std::string path() const { return folder_ + "/setpriv"; }

private:
    std::string folder_ = "/tmp/roots-program-XXXXXX";
};

/// As user nobody, runs a program of root that takes 20 seconds with a time limit of half a second.
/// Ends with status 0 if the program was not waited for.
void runAsNobody(std::string const & program) {
    constexpr uid_t nobody = 65534;
    if (setuid(nobody) != 0) {
        _exit(2);
    }
    auto const start = Clock::now();
    auto const answer = run({program, "--reuid=0", "sleep", "20"}, {start + 500ms, 1000});
    bool const waited = Clock::now() - start > 15s;
    _exit(!waited && is<TimeLimitReached>(answer) ? 0 : 1);
}

TEST(Run, AProgramOfAnotherUserIsNotWaitedFor) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can make a program that runs as another user: run as root";
    }
    RootsProgram const program;
    EXPECT_EXIT(runAsNobody(program.path()), testing::ExitedWithCode(0), "");
}

TEST(Run, OutputErrorsAndStatusAreSeparate) {
    auto const it = exited(shell("echo out; echo err >&2; exit 3"));
    EXPECT_EQ(it.status, 3);
    EXPECT_EQ(it.output.text(), "out\n");
    EXPECT_EQ(it.errors, "err\n");
}

TEST(Run, AProgramWithoutOutputHasEmptyTexts) {
    auto const it = exited({"true"});
    EXPECT_EQ(it.status, 0);
    EXPECT_EQ(it.output.text(), "");
    EXPECT_EQ(it.errors, "");
}

TEST(Run, AnOutputOf50MegabytesIsCompleteAndFollowedByZeros) {
    std::string expected;
    for (int number = 1; number <= 7'000'000; ++number) {
        expected.append(std::to_string(number)).push_back('\n');
    }
    ASSERT_GT(expected.size(), 50'000'000U);
    std::string received;
    auto const answer =
        run({"seq", "7000000"}, patient(), [&](std::string_view piece) { received += piece; });
    ASSERT_TRUE(is<Exited>(answer));
    auto const text = std::get<Exited>(answer).output.text();
    EXPECT_TRUE(text == expected);
    EXPECT_TRUE(received == expected);
    auto const * const end = text.data() + text.size();
    EXPECT_TRUE(std::all_of(end, end + FileBytes::padding, [](char c) { return c == 0; }));
}

TEST(Run, APieceIsReceivedWhileTheProgramStillRuns) {
    Folder const folder;
    std::vector<std::string> pieces;
    auto const answer = run(
        shell("echo one; until [ -e \"$1\" ]; do sleep 0.01; done; echo two", {folder.path("go")}),
        patient(), [&](std::string_view piece) {
            pieces.emplace_back(piece);
            folder.put("go", "", 0600);
        });
    EXPECT_TRUE(is<Exited>(answer));
    EXPECT_EQ(pieces, (std::vector<std::string>{"one\n", "two\n"}));
}

TEST(Run, WordsAreNotInterpretedByAShell) {
    auto const it = exited({"printf", "<%s>\n", "$(date)", ";", "`date`", "a\nb", "", "*", "'\"\\",
                            "> /dev/null", "\xff"});
    EXPECT_EQ(it.output.text(), "<$(date)>\n"
                                "<;>\n"
                                "<`date`>\n"
                                "<a\nb>\n"
                                "<>\n"
                                "<*>\n"
                                "<'\"\\>\n"
                                "<> /dev/null>\n"
                                "<\xff>\n");
}

TEST(Run, ManyWordsAllArrive) {
    Words words{"printf", "%s\n"};
    words.insert(words.end(), 20'000, "word");
    EXPECT_EQ(exited(words).output.text().size(), 20'000U * 5);
}

TEST(Run, MoreWordsThanTheSystemAllowsAreItsError) {
    EXPECT_EQ(errorOf({"true", std::string(10'000'000, 'x')}), E2BIG);
}

TEST(Run, AnEmptyListOfWordsIsRefused) {
    EXPECT_EQ(errorOf({}), EINVAL);
}

TEST(Run, AWordWithAZeroByteIsRefused) {
    EXPECT_EQ(errorOf({"printf", std::string("a\0b", 3)}), EINVAL);
}

TEST(Run, AnEmptyNameIsNotFound) {
    EXPECT_EQ(errorOf({""}), ENOENT);
}

TEST(Run, AMissingProgramIsReported) {
    EXPECT_EQ(errorOf({"no-such-program-anywhere"}), ENOENT);
    EXPECT_EQ(errorOf({"/no/such/program"}), ENOENT);
}

TEST(Run, AFileWithoutExecutePermissionIsReported) {
    Folder const folder;
    EXPECT_EQ(errorOf({folder.put("plain", "#!/bin/sh\n", 0600)}), EACCES);
    EXPECT_EQ(errorOf({folder.path()}), EACCES);
}

/// Tests with their own PATH.
class RunAlongThePath : public testing::Test {
protected:
    RunAlongThePath() {
        setenv("PATH", (first_.path() + ":" + second_.path() + ":" + before_).c_str(), 1);
    }

    ~RunAlongThePath() override { setenv("PATH", before_.c_str(), 1); }

    std::string before_ = getenv("PATH");
    Folder first_;
    Folder second_;
};

TEST_F(RunAlongThePath, TheFirstExecutableFileIsRun) {
    first_.put("program-of-two", "#!/bin/sh\necho first\n", 0600);
    second_.put("program-of-two", "#!/bin/sh\necho second\n", 0700);
    EXPECT_EQ(exited({"program-of-two"}).output.text(), "second\n");
    first_.put("program-of-two", "#!/bin/sh\necho first\n", 0700);
    EXPECT_EQ(exited({"program-of-two"}).output.text(), "first\n");
}

TEST_F(RunAlongThePath, IfNoFileIsExecutableThePermissionIsReported) {
    first_.put("program-of-two", "#!/bin/sh\n", 0600);
    EXPECT_EQ(errorOf({"program-of-two"}), EACCES);
}

/// Tests in a folder of their own, in which there is a program `here`.
class RunInAFolder : public RunAlongThePath {
protected:
    RunInAFolder() {
        first_.put("here", "#!/bin/sh\necho here\n", 0700);
        std::filesystem::current_path(first_.path());
    }

    ~RunInAFolder() override { std::filesystem::current_path(folder_); }

    std::filesystem::path folder_ = std::filesystem::current_path();
};

TEST_F(RunInAFolder, RootRunsNothingFromARelativeEntry) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root skips entries of PATH: run as root";
    }
    for (std::string const entry : {"", ".", "./", "x/.."}) {
        setenv("PATH", (entry + ":" + before_).c_str(), 1);
        EXPECT_EQ(errorOf({"here"}), ENOENT) << entry;
    }
    setenv("PATH", "", 1);
    auto const answer = run({"here"}, patient());
    ASSERT_TRUE(is<NotStarted>(answer));
    EXPECT_TRUE(std::get<NotStarted>(answer).onlyInRelativeEntry);
}

TEST_F(RunInAFolder, RootRunsTheProgramOfAnAbsoluteEntryAfterARelativeOne) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root skips entries of PATH: run as root";
    }
    second_.put("here", "#!/bin/sh\necho second\n", 0700);
    setenv("PATH", (".:" + second_.path() + ":" + before_).c_str(), 1);
    EXPECT_EQ(exited({"here"}).output.text(), "second\n");
}

TEST_F(RunInAFolder, ANameWithASlashIsNotLookedUp) {
    EXPECT_EQ(exited({"./here"}).output.text(), "here\n");
}

TEST_F(RunAlongThePath, AScriptWithoutAnInterpreterLineIsRunByTheShell) {
    first_.put("bare-script", "echo \"$1\"\n", 0700);
    EXPECT_EQ(exited({"bare-script", "a word"}).output.text(), "a word\n");
}

TEST(Run, TheSignalThatEndsAProgramIsReported) {
    auto const answer = run(shell("echo why >&2; kill -TERM $$"), patient());
    ASSERT_TRUE(is<KilledBySignal>(answer));
    EXPECT_EQ(std::get<KilledBySignal>(answer).signal, SIGTERM);
    EXPECT_EQ(std::get<KilledBySignal>(answer).errors, "why\n");
}

TEST(Run, ASigkillFromElsewhereIsReportedLikeAnySignal) {
    auto const answer = run(shell("kill -KILL $$"), patient());
    ASSERT_TRUE(is<KilledBySignal>(answer));
    EXPECT_EQ(std::get<KilledBySignal>(answer).signal, SIGKILL);
}

TEST(Run, TheLast4096BytesOfTheErrorsAreKept) {
    auto const it = exited(shell("yes abc | head -c 4000000 >&2; echo done; echo end! >&2"));
    EXPECT_EQ(it.output.text(), "done\n");
    EXPECT_EQ(it.errors.size(), 4093U);
    EXPECT_EQ(it.errors.substr(0, 8), "abc\nabc\n");
    EXPECT_EQ(it.errors.substr(4080), "abc\nabc\nend!\n");
}

TEST(Run, ErrorsOf4096BytesAreKeptWhole) {
    EXPECT_EQ(exited(shell("yes abc | head -c 4096 >&2")).errors.size(), 4096U);
}

TEST(Run, LongErrorsWithoutALineEndAreCut) {
    auto const it = exited(shell("yes | tr -d '\\n' | head -c 100000 >&2; echo end >&2"));
    EXPECT_EQ(it.errors, std::string(4092, 'y') + "end\n");
}

TEST(Run, AProgramThatDoesNotEndIsKilledAtTheTimeLimit) {
    auto const start = Clock::now();
    EXPECT_TRUE(is<TimeLimitReached>(within(300ms, "exec sleep 1000")));
    EXPECT_GE(Clock::now() - start, 300ms);
    EXPECT_LT(Clock::now() - start, 60s);
}

TEST(Run, NothingIsStartedAfterTheTimeLimit) {
    EXPECT_TRUE(is<TimeLimitReached>(run({"/no/such/program"}, {Clock::now() - 1s, 1000})));
}

TEST(Run, ATimeLimitInTheFarFutureDoesNotOverflow) {
    auto const answer = run({"true"}, {Clock::time_point::max(), 1000});
    EXPECT_TRUE(is<Exited>(answer));
}

TEST(Run, AProgramThatIgnoresSigtermDoesNotSurvive) {
    auto const printed =
        printedBeforeTheTimeLimit("trap '' TERM HUP INT; echo $$; while :; do sleep 1; done");
    EXPECT_TRUE(diesSoon(std::stoi(printed)));
}

TEST(Run, AStoppedProgramDoesNotSurvive) {
    EXPECT_TRUE(diesSoon(std::stoi(printedBeforeTheTimeLimit("echo $$; kill -STOP $$"))));
}

TEST(Run, ItsChildrenDoNotSurviveTheTimeLimit) {
    EXPECT_TRUE(diesSoon(std::stoi(printedBeforeTheTimeLimit("sleep 1000 & echo $!; wait"))));
}

TEST(Run, ItsChildrenDoNotSurviveItsEnd) {
    auto const it = exited(shell("sleep 1000 > /dev/null 2>&1 & echo $!; exit 4"));
    EXPECT_EQ(it.status, 4);
    EXPECT_TRUE(diesSoon(std::stoi(std::string(it.output.text()))));
}

TEST(Run, AfterItsEndAProcessThatHoldsTheOutputOpenIsNotWaitedFor) {
    auto const start = Clock::now();
    auto const it = exited(shell("setsid sleep 1000 & echo $!; echo text; exit 4"));
    EXPECT_LT(Clock::now() - start, 60s);
    EXPECT_EQ(it.status, 4);
    EXPECT_TRUE(it.output.text().ends_with("\ntext\n")) << it.output.text();
    kill(std::stoi(std::string(it.output.text())), SIGKILL);
}

TEST(Run, AfterItsEndAProcessThatKeepsPrintingIsReadUntilTheLimit) {
    EXPECT_TRUE(is<OutputLimitReached>(limitedTo(10'000'000, "yes & exit 0")));
}

TEST(Run, AProgramThatClosesItsOutputIsWaitedFor) {
    EXPECT_EQ(exited(shell("exec >&- 2>&-; sleep 0.5; exit 7")).status, 7);
}

TEST(Run, AsManyBytesAsAllowedAreAccepted) {
    EXPECT_TRUE(is<Exited>(limitedTo(0, "exit 0")));
    EXPECT_TRUE(is<Exited>(limitedTo(1000, "head -c 1000 /dev/zero")));
    EXPECT_TRUE(is<Exited>(limitedTo(200'000, "head -c 200000 /dev/zero")));
}

TEST(Run, OneByteMoreThanAllowedIsTooMany) {
    EXPECT_TRUE(is<OutputLimitReached>(limitedTo(0, "head -c 1 /dev/zero")));
    EXPECT_TRUE(is<OutputLimitReached>(limitedTo(1000, "head -c 1001 /dev/zero")));
    EXPECT_TRUE(is<OutputLimitReached>(limitedTo(200'000, "head -c 200001 /dev/zero")));
}

TEST(Run, AProgramThatPrintsForeverIsKilledAtTheOutputLimit) {
    auto const answer = limitedTo(1'000'000, "yes");
    ASSERT_TRUE(is<OutputLimitReached>(answer));
    EXPECT_EQ(std::get<OutputLimitReached>(answer).bytes, 1'000'000U);
}

TEST(Run, AnExceptionFromTheReceiverIsPassedOnAndLeavesNothing) {
    std::string printed;
    auto const refuse = [&](std::string_view piece) {
        printed = piece;
        throw std::runtime_error("refused");
    };
    EXPECT_THROW(run(shell("echo $$; sleep 1000"), patient(), refuse), std::runtime_error);
    EXPECT_TRUE(diesSoon(std::stoi(printed)));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST(Run, NoResultLeavesADescriptorOrAChild) {
    exited({"true"});
    auto const before = openDescriptors();
    for (int round = 0; round < 10; ++round) {
        exited({"true"});
        exited(shell("setsid sleep 0.3 & exit 1"));
        EXPECT_EQ(errorOf({"/no/such/program"}), ENOENT);
        EXPECT_TRUE(is<TimeLimitReached>(within(20ms, "sleep 1000")));
        EXPECT_TRUE(is<OutputLimitReached>(limitedTo(10, "yes")));
        EXPECT_TRUE(is<KilledBySignal>(run(shell("kill -9 $$"), patient())));
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(Run, ManyThreadsAtOnceEachGetTheirOwnResult) {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 16; ++thread) {
        threads.emplace_back([thread] {
            for (int round = 0; round < 10; ++round) {
                auto const text = std::to_string(thread * 100 + round);
                EXPECT_EQ(exited({"echo", text}).output.text(), text + "\n");
            }
        });
    }
    threads.clear();
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST(Run, SignalsHandledMeanwhileDoNoHarm) {
    static volatile std::sig_atomic_t ticks = 0;

    struct sigaction action {};

    action.sa_handler = [](int) { ticks = ticks + 1; };

    struct sigaction before {};

    sigaction(SIGALRM, &action, &before);
    itimerval const often{{0, 1000}, {0, 1000}};
    setitimer(ITIMER_REAL, &often, nullptr);
    auto const it = exited(shell("sleep 0.3; seq 100000; exit 5"));
    itimerval const never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
    EXPECT_GT(ticks, 0);
    EXPECT_EQ(it.status, 5);
    EXPECT_EQ(it.output.text().size(), 588895U);
}

} // namespace

} // namespace vxshow::test
