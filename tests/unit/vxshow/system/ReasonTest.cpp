#include "vxshow/system/Reason.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>

using namespace std::chrono_literals;

namespace vxshow::test {

namespace {

using namespace system;

std::string reasonOf(RunResult const & answer, std::chrono::milliseconds limit = 5s) {
    return reason(answer, "vtysh", limit);
}

Exited exitedWith(int status, std::string errors) {
    return {status, FileBytes::copyOf("output"), std::move(errors)};
}

TEST(Reason, AMissingProgram) {
    EXPECT_EQ(reasonOf(NotStarted{ENOENT}), "no such program: vtysh");
}

TEST(Reason, AProgramThatRootDoesNotRun) {
    EXPECT_EQ(
        reasonOf(NotStarted{ENOENT, true}),
        "no such program: vtysh (found only in an empty or relative entry of PATH, which root "
        "does not use)");
}

TEST(Reason, AProgramWithoutExecutePermission) {
    EXPECT_EQ(reason(NotStarted{EACCES}, "/x/y", 5s), "permission: /x/y cannot be run");
}

TEST(Reason, AnyOtherSystemError) {
    EXPECT_EQ(reasonOf(NotStarted{EMFILE}),
              "unreachable: vtysh cannot be run: Too many open files");
}

TEST(Reason, APathThatLeadsNowhere) {
    EXPECT_EQ(reasonOf(NotStarted{ENOTDIR}),
              "no such program: vtysh cannot be run: Not a directory");
}

TEST(Reason, AFileThatIsNotAProgram) {
    EXPECT_EQ(reasonOf(NotStarted{ENOEXEC}),
              "no such program: vtysh cannot be run: Exec format error");
}

TEST(Reason, ControlCharactersInANameAreEscaped) {
    EXPECT_EQ(reason(NotStarted{ENOENT}, "a\x1b[2J\nb", 5s), "no such program: a\\x1b[2J\\x0ab");
}

TEST(Reason, TheTimeLimitIsInSeconds) {
    EXPECT_EQ(reasonOf(TimeLimitReached{}, 5s), "time limit: no answer within 5 s");
    EXPECT_EQ(reasonOf(TimeLimitReached{}, 500ms), "time limit: no answer within 0.5 s");
    EXPECT_EQ(reasonOf(TimeLimitReached{}, 12250ms), "time limit: no answer within 12.25 s");
    EXPECT_EQ(reasonOf(TimeLimitReached{}, 1001ms), "time limit: no answer within 1.001 s");
    EXPECT_EQ(reasonOf(TimeLimitReached{}, 100s), "time limit: no answer within 100 s");
}

TEST(Reason, TooManyBytes) {
    EXPECT_EQ(reasonOf(OutputLimitReached{1000}), "broken answer: more than 1000 bytes");
}

TEST(Reason, ASignal) {
    EXPECT_EQ(reasonOf(KilledBySignal{SIGKILL, "words"}),
              "broken answer: vtysh was killed by signal 9 (Killed)");
    EXPECT_EQ(reasonOf(KilledBySignal{SIGSEGV, ""}),
              "broken answer: vtysh was killed by signal 11 (Segmentation fault)");
}

TEST(Reason, ASignalWithoutAName) {
    EXPECT_EQ(reasonOf(KilledBySignal{50, ""}), "broken answer: vtysh was killed by signal 50");
}

TEST(Reason, TheFirstNonBlankLineOfTheErrors) {
    EXPECT_EQ(reasonOf(exitedWith(1, "\n \t\r\n  Exiting: no daemons. \r\nmore\n")),
              "Exiting: no daemons.");
    EXPECT_EQ(reasonOf(exitedWith(1, "no line end")), "no line end");
}

TEST(Reason, ControlCharactersInTheErrorsAreEscaped) {
    EXPECT_EQ(reasonOf(exitedWith(1, "\x1b[31mred\xff\n")), "\\x1b[31mred\\xff");
}

TEST(Reason, ALongLineIsCut) {
    EXPECT_EQ(reasonOf(exitedWith(1, std::string(300, 'x'))), std::string(300, 'x'));
    EXPECT_EQ(reasonOf(exitedWith(1, std::string(301, 'x'))), std::string(300, 'x') + "...");
}

TEST(Reason, TheExitStatusIfThereAreNoErrors) {
    EXPECT_EQ(reasonOf(exitedWith(3, "")), "vtysh ended with exit status 3");
    EXPECT_EQ(reasonOf(exitedWith(3, " \n\n")), "vtysh ended with exit status 3");
}

TEST(Reason, AnInterrupt) {
    EXPECT_EQ(reasonOf(Interrupted{}), "interrupted");
}

} // namespace

} // namespace vxshow::test
