#include "vxshow/sources/frr/VtyshOutput.h"

#include "vxshow/sources/frr/Conversation.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

using namespace std::chrono_literals;

constexpr char const * noConfiguration =
    "% Can't open configuration file /etc/frr/vtep1/vtysh.conf due to 'No such file or "
    "directory'.\n";

system::RunResult exited(int status, std::string const & errors, std::string_view output = "") {
    return system::Exited{status, system::FileBytes::copyOf(output), errors};
}

std::string failure(system::RunResult answer) {
    try {
        vtyshOutput(std::move(answer), {"vtysh", 5s});
    } catch (Failure const & failure) {
        return failure.what();
    }
    return "accepted";
}

} // namespace

TEST(VtyshOutput, IsStandardOutput) {
    EXPECT_EQ(vtyshOutput(exited(0, "", "{}\n"), {"vtysh", 5s}).text(), "{}\n");
}

TEST(VtyshOutput, AMissingConfigurationFileIsHarmless) {
    EXPECT_EQ(vtyshOutput(exited(0, noConfiguration, "{}"), {"vtysh", 5s}).text(), "{}");
}

TEST(VtyshOutput, ACommandsComplaintStaysInItsPlace) {
    std::string const printed = "h# show x\n% Unknown command: show x\n";
    EXPECT_EQ(vtyshOutput(exited(1, noConfiguration, printed), {"vtysh", 5s}).text(), printed);
}

TEST(VtyshOutput, WithoutAnyDaemonItIsUnreachable) {
    EXPECT_EQ(failure(exited(1, noConfiguration +
                                    std::string("Exiting: failed to connect to any daemons.\n"))),
              "unreachable: Exiting: failed to connect to any daemons.");
}

TEST(VtyshOutput, TheHintIsAboutPermission) {
    EXPECT_EQ(failure(exited(1, "Exiting: failed to connect to any daemons.\nHint: if this seems "
                                "wrong, try running me as a privileged user!\n")),
              "permission: Exiting: failed to connect to any daemons.");
}

TEST(VtyshOutput, WithoutZebraItIsUnreachable) {
    EXPECT_EQ(failure(exited(1, "zebra is not running\n")), "unreachable: zebra is not running");
}

TEST(VtyshOutput, AnErrorOfSshIsQuoted) {
    EXPECT_EQ(failure(exited(255, "ssh: connect to host leaf7 port 22: Connection refused\r\n")),
              "unreachable: ssh: connect to host leaf7 port 22: Connection refused");
    EXPECT_EQ(failure(exited(255, "admin@leaf7: Permission denied (publickey).\r\n")),
              "permission: admin@leaf7: Permission denied (publickey).");
}

TEST(VtyshOutput, ARemoteShellCanLackVtysh) {
    EXPECT_EQ(failure(exited(127, "bash: line 1: vtysh: command not found\n")),
              "no such program: bash: line 1: vtysh: command not found");
}

TEST(VtyshOutput, ARefusalOfSudoIsAboutPermission) {
    EXPECT_EQ(failure(exited(1, "sudo: a password is required\n")),
              "permission: sudo: a password is required");
    EXPECT_EQ(failure(exited(1, "alice is not in the sudoers file.\n")),
              "permission: alice is not in the sudoers file.");
    EXPECT_EQ(failure(exited(1, "Sorry, user alice is not allowed to execute '/usr/bin/vtysh' as "
                                "root on leaf7.\n")),
              "permission: Sorry, user alice is not allowed to execute '/usr/bin/vtysh' as root on "
              "leaf7.");
    EXPECT_EQ(failure(exited(1, "doas: Operation not permitted\n")),
              "permission: doas: Operation not permitted");
}

TEST(VtyshOutput, SudoCanLackVtysh) {
    EXPECT_EQ(failure(exited(1, "sudo: vtysh: command not found\n")),
              "no such program: sudo: vtysh: command not found");
}

TEST(VtyshOutput, AWarningOfSudoIsNotTheReason) {
    EXPECT_EQ(failure(exited(1, "sudo: unable to resolve host leaf7: Name or service not known\n"
                                "zebra is not running\n")),
              "unreachable: zebra is not running");
}

TEST(VtyshOutput, AConfigurationFileThatCannotBeReadIsNotTheReason) {
    auto const failureBehind = [](int status, std::string const & errors) {
        return failure(exited(status, "% Can't open configuration file /etc/frr/vtysh.conf due to "
                                      "'Permission denied'.\n" +
                                          errors));
    };
    EXPECT_EQ(failureBehind(1, "Exiting: failed to connect to any daemons.\n"),
              "unreachable: Exiting: failed to connect to any daemons.");
    EXPECT_EQ(failureBehind(1, "Exiting: failed to connect to any daemons.\nHint: if this seems "
                               "wrong, try running me as a privileged user!\n"),
              "permission: Exiting: failed to connect to any daemons.");
    EXPECT_EQ(failureBehind(1, "zebra is not running\n"), "unreachable: zebra is not running");
    EXPECT_EQ(failureBehind(255, "Connection to leaf7 closed by remote host.\n"),
              "unreachable: Connection to leaf7 closed by remote host.");
    EXPECT_EQ(failureBehind(255, "admin@leaf7: Permission denied (publickey).\r\n"),
              "permission: admin@leaf7: Permission denied (publickey).");
    EXPECT_EQ(failureBehind(127, "sh: 1: vtysh: not found"),
              "no such program: sh: 1: vtysh: not found");
    EXPECT_EQ(failureBehind(126, ""), "no such program: vtysh");
    EXPECT_EQ(failureBehind(3, "out of memory\n"), "broken answer: out of memory");
    EXPECT_EQ(failureBehind(3, ""), "broken answer: vtysh ended with status 3");
}

TEST(VtyshOutput, AnyOtherStatusIsABrokenAnswer) {
    EXPECT_EQ(failure(exited(3, noConfiguration)), "broken answer: vtysh ended with status 3");
    EXPECT_EQ(failure(exited(3, "what\x1b[2J\n")), "broken answer: what\\x1b[2J");
}

TEST(VtyshOutput, OtherEndsOfTheRunAreReported) {
    EXPECT_EQ(failure(system::NotStarted{ENOENT}), "no such program: vtysh");
    EXPECT_EQ(failure(system::OutputLimitReached{1000}), "broken answer: more than 1000 bytes");
    EXPECT_EQ(failure(system::TimeLimitReached{}), "time limit: no answer within 5 s");
    EXPECT_THROW(vtyshOutput(system::TimeLimitReached{}, {"vtysh", 5s}), TimedOut);
}

} // namespace vxshow::test
