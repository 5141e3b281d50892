#include "vxshow/sources/frr/VtyshWords.h"

#include "vxshow/sources/AnswerError.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

using Words = std::vector<std::string>;

std::string answersError(std::string_view printed, Words const & commands) {
    try {
        vtyshAnswers(printed, commands);
    } catch (AnswerError const & error) {
        return error.what();
    }
    return "accepted";
}

} // namespace

TEST(VtyshWords, AreTheProgramTheDaemonAndTheCommands) {
    EXPECT_EQ(vtyshWords({}, {"show a", "show b"}),
              (Words{"vtysh", "-d", "zebra", "-E", "-c", "show a", "-c", "show b"}));
}

TEST(VtyshWords, APathSpaceComesFirst) {
    EXPECT_EQ(vtyshWords({{"sudo", "vtysh"}, "vtep1"}, {"show a"}),
              (Words{"sudo", "vtysh", "-N", "vtep1", "-d", "zebra", "-E", "-c", "show a"}));
}

TEST(VtyshWords, ForARemoteShellAllButTheOperatorsWordsAreQuoted) {
    EXPECT_EQ(vtyshWords({{"ssh", "leaf7", "vtysh"}, "it's; reboot", true}, {"show a"}),
              (Words{"ssh", "leaf7", "vtysh", "'-N'", "'it'\\''s; reboot'", "'-d'", "'zebra'",
                     "'-E'", "'-c'", "'show a'"}));
}

TEST(VtyshAnswers, FollowTheLinesOfTheirCommands) {
    EXPECT_EQ(vtyshAnswers("h# show a\n{\n}\nh# show b\n[]\n", {"show a", "show b"}),
              (std::vector<std::string_view>{"{\n}\n", "[]\n"}));
}

TEST(VtyshAnswers, CanBeEmpty) {
    EXPECT_EQ(vtyshAnswers("h# show a\nh# show b\nh# show c\n", {"show a", "show b", "show c"}),
              (std::vector<std::string_view>{"", "", ""}));
}

TEST(VtyshAnswers, TheLastLineCanEndWithTheOutput) {
    EXPECT_EQ(vtyshAnswers("h# show a", {"show a"}), (std::vector<std::string_view>{""}));
}

TEST(VtyshAnswers, AHostNameCanLookLikeTheLineOfACommand) {
    EXPECT_EQ(
        vtyshAnswers("a# show a# b# show a\n{}\na# show a# b# show b\n", {"show a", "show b"}),
        (std::vector<std::string_view>{"{}\n", ""}));
}

TEST(VtyshAnswers, ACommandWithinALineIsNotItsLine) {
    EXPECT_EQ(vtyshAnswers("h# show a\n\"# show b\"\nh# show b\n{}", {"show a", "show b"}),
              (std::vector<std::string_view>{"\"# show b\"\n", "{}"}));
}

TEST(VtyshAnswers, ALineFullOfCommandsIsScannedOnce) {
    std::string line;
    for (int count = 0; count < 300'000; ++count) {
        line += "# show b ";
    }
    EXPECT_EQ(vtyshAnswers("h# show a\n" + line + "\nh# show b\n{}", {"show a", "show b"}),
              (std::vector<std::string_view>{line + "\n", "{}"}));
}

TEST(VtyshAnswers, ACommandCanBeTheStartOfTheNext) {
    EXPECT_EQ(vtyshAnswers("h# show a\n1\nh# show ab\n2\n", {"show a", "show ab"}),
              (std::vector<std::string_view>{"1\n", "2\n"}));
}

TEST(VtyshAnswers, LinesInAnotherOrderAreRefused) {
    EXPECT_EQ(answersError("h# show b\n{}\nh# show a\n{}\n", {"show a", "show b"}),
              "show a: found \"h# show b\", expected a line that ends in the command, and the "
              "answer");
}

TEST(VtyshAnswers, AMissingLineIsRefused) {
    EXPECT_EQ(answersError("h# show a\n{}\n", {"show a", "show b"}),
              "show b: found the end of what vtysh printed, expected a line that ends in the "
              "command, and the answer");
}

TEST(VtyshAnswers, TextBeforeTheFirstLineIsRefused) {
    EXPECT_EQ(answersError("Welcome\x1b[2J!\nh# show a\n{}\n", {"show a"}),
              "show a: found \"Welcome\\x1b[2J!\", expected a line that ends in the command, and "
              "the answer");
}

TEST(VtyshAnswers, EmptyOutputIsRefused) {
    EXPECT_EQ(answersError("", {"show a"}), "show a: found the end of what vtysh printed, expected "
                                            "a line that ends in the command, and the answer");
}

TEST(VtyshAnswers, AnUnknownCommandIsReportedInTheWordsOfVtysh) {
    EXPECT_EQ(answersError("h# show a\n{}\nh# show b\n% Unknown command: show b\n",
                           {"show a", "show b", "show c"}),
              "show b: vtysh says % Unknown command: show b");
}

} // namespace vxshow::test
