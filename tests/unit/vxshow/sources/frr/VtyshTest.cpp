#include "vxshow/sources/frr/Vtysh.h"

#include "tests/unit/vxshow/sources/frr/FakeZebra.h"
#include "vxshow/sources/Access.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

using namespace std::chrono_literals;

/// Prints a line for each command, and no answers.
constexpr char const * echo = R"(
while [ $# -gt 0 ]; do
    if [ "$1" = -c ]; then
        shift
        echo "a # b# $1"
    fi
    shift
done
)";

} // namespace

/// A `vtysh` that is a script, run with the words that a real one would get.
class VtyshTest : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "vtysh.XXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        folder_ = pattern;
    }

    void TearDown() override { std::filesystem::remove_all(folder_); }

    /// Asks for everything.
    Answer ask(std::string const & script, std::chrono::milliseconds time = 60s) {
        std::ofstream(folder_ + "/vtysh") << script;
        VtyshCommand command{{"/bin/sh", folder_ + "/vtysh"}};
        return askVtysh(command, {.name = "leaf1", .expectsEvpn = false}, {}, Deadline::in(time),
                        100000, [this](std::string_view piece) { received_ += piece.size(); });
    }

    std::string failure(std::string const & script, std::chrono::milliseconds time = 60s) {
        try {
            ask(script, time);
        } catch (Failure const & failure) {
            return failure.what();
        }
        return "accepted";
    }

    std::string folder_;
    std::size_t received_ = 0;
};

TEST_F(VtyshTest, IsRunForItsAnswers) {
    EXPECT_EQ(linesOf(ask(echo).facts), "switch leaf1 id none\n");
    EXPECT_EQ(received_, 33U + 34U + 32U + 40U + 25U + 41U);
}

TEST_F(VtyshTest, ARemoteShellPassesTheWordsOnUnchanged) {
    std::ofstream(folder_ + "/ssh") << "eval \"set -- $*\"\n[ \"$2\" = \"$SPACE\" ] || exit 9\n"
                                    << echo;
    std::string const pathSpace = "it's; $(exit 8) \"\\ *";
    ASSERT_EQ(::setenv("SPACE", pathSpace.c_str(), 1), 0);
    VtyshCommand const command{{"/bin/sh", folder_ + "/ssh"}, pathSpace, true};
    auto const answer =
        askVtysh(command, {.name = "leaf1", .expectsEvpn = false}, {}, Deadline::in(60s), 100000);
    ::unsetenv("SPACE");
    EXPECT_EQ(linesOf(answer.facts), "switch leaf1 id none\n");
}

TEST_F(VtyshTest, ItsFailureIsReported) {
    EXPECT_EQ(failure("echo 'Exiting: failed to connect to any daemons.' >&2; exit 1"),
              "unreachable: Exiting: failed to connect to any daemons.");
}

TEST_F(VtyshTest, AnUnknownCommandIsReported) {
    EXPECT_EQ(failure("echo 'h# show evpn vni detail json'\n"
                      "echo '% Unknown command: show evpn vni detail json'; exit 1"),
              "broken answer: show evpn vni detail json: vtysh says % Unknown command: show evpn "
              "vni detail json");
}

TEST_F(VtyshTest, TooMuchOutputIsReported) {
    EXPECT_EQ(failure("while :; do echo 0123456789012345678901234567890123456789; done"),
              "broken answer: more than 100000 bytes");
}

TEST_F(VtyshTest, ADaemonThatEndsInItsAnswerIsTheReason) {
    // As vtysh 8.4.4 prints it, with status 0.
    EXPECT_EQ(failure("echo 'vm# show evpn vni detail json'\n"
                      "printf '[{\"vni\":10,\"type\":\"L2\",\"vt'\n"
                      "printf 'vtysh: error reading from zebra: Unknown error -2 (-2)'\n"
                      "echo 'Warning: closing connection to zebra because of an I/O error!'\n"
                      "echo 'vm# show evpn mac vni all json'\n"),
              "unreachable: zebra ended while it answered show evpn vni detail json");
}

TEST_F(VtyshTest, BlanksWithoutEndAreStoppedEarly) {
    std::ofstream(folder_ + "/vtysh") << "echo '\"'; tr '\\0' ' ' </dev/zero";
    VtyshCommand const command{{"/bin/sh", folder_ + "/vtysh"}};
    try {
        askVtysh(command, {"leaf1"}, {}, Deadline::in(60s), maxClientOutput);
        FAIL();
    } catch (Failure const & failure) {
        EXPECT_STREQ(failure.what(),
                     "broken answer: more than 67108864 bytes without the end of a value");
    }
}

TEST_F(VtyshTest, ADaemonThatHangsEndsAtTheTimeLimit) {
    EXPECT_EQ(failure("sleep 1000", 300ms), "time limit: no answer within 0.3 s");
}

} // namespace vxshow::test
