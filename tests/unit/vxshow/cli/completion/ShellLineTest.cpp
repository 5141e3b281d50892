#include "vxshow/cli/completion/ShellLine.h"

#include <gtest/gtest.h>

namespace completion = vxshow::cli::completion;

namespace {

constexpr std::string_view breaks = " \t\n\"'><=;|&(:";

std::string replaced(std::string_view line, std::string_view text) {
    return completion::replacement(completion::splitLine(line, breaks).word, text)
        .value_or("(none)");
}

} // namespace

TEST(ShellLine, WordsAreUnquotedAsAShellDoes) {
    auto const typed =
        completion::splitLine(R"(vxshow  'a b' "c\"d\x" e\ f --g=h "" last)", breaks);
    EXPECT_EQ(typed.before,
              (std::vector<std::string>{"vxshow", "a b", "c\"d\\x", "e f", "--g=h", ""}));
    EXPECT_EQ(typed.word.text, "last");
}

TEST(ShellLine, AfterABlankANewWordStarts) {
    auto const typed = completion::splitLine("vxshow mac ", breaks);
    EXPECT_EQ(typed.before, (std::vector<std::string>{"vxshow", "mac"}));
    EXPECT_EQ(typed.word.text, "");
    EXPECT_EQ(typed.word.kept, 0U);
}

TEST(ShellLine, AnEmptyLineHasNoWords) {
    auto const typed = completion::splitLine("", breaks);
    EXPECT_TRUE(typed.before.empty());
    EXPECT_EQ(typed.word.raw, "");
}

TEST(ShellLine, ABackslashAtTheEndStandsForItself) {
    EXPECT_EQ(completion::splitLine("a b\\", breaks).word.text, "b\\");
}

TEST(ShellLine, NothingIsExpanded) {
    EXPECT_EQ(completion::splitLine("vxshow $(id) `id` $HOME ~ ", breaks).before,
              (std::vector<std::string>{"vxshow", "$(id)", "`id`", "$HOME", "~"}));
}

TEST(ShellLine, AReplacementIsQuoted) {
    EXPECT_EQ(replaced("x ra", "rack 1"), "rack\\ 1");
    EXPECT_EQ(replaced("x ", "$(id)`id`;&|<>!\"'\\*?[]{}~#"),
              R"(\$\(id\)\`id\`\;\&\|\<\>\!\"\'\\\*\?\[\]\{\}\~\#)");
    EXPECT_EQ(replaced("x ", "_-./,:=@%+\xc3\xbc"), "_-./,:=@%+\xc3\xbc");
}

TEST(ShellLine, OnlyWhatFollowsABreakIsReplaced) {
    EXPECT_EQ(replaced("x --source=le", "--source=leaf1"), "leaf1");
    EXPECT_EQ(replaced("x --source=", "--source=rack 1"), "rack\\ 1");
    EXPECT_EQ(replaced("x 00:00:5", "00:00:5e"), "5e");
    EXPECT_EQ(replaced("x a\\:b", "a:bc"), "(none)"); // typed in another way
}

TEST(ShellLine, AWordIsContinuedAfterABackslash) {
    EXPECT_EQ(replaced("x rack\\ ", "rack 1"), "rack\\ 1");
}

TEST(ShellLine, InOpenQuotesTheTextStandsAsItIs) {
    EXPECT_EQ(replaced("x 'rack", "rack 1"), "rack 1");
    EXPECT_EQ(replaced("x --source=\"ra", "--source=rack 1"), "rack 1");
    EXPECT_EQ(replaced("x '$", "$(id)"), "$(id)");
}

TEST(ShellLine, InOpenQuotesATextThatCannotStandThereIsLeftOut) {
    EXPECT_EQ(replaced("x 'o", "o'neil"), "(none)");
    EXPECT_EQ(replaced("x \"a", "a$(id)"), "(none)");
    EXPECT_EQ(replaced("x \"a", "a`id`"), "(none)");
    EXPECT_EQ(replaced("x \"a", "a\\b"), "(none)");
    EXPECT_EQ(replaced("x 'a", "a!b"), "(none)");
}

TEST(ShellLine, AfterAClosedQuoteNothingIsOffered) {
    EXPECT_EQ(replaced("x 'ra'c", "rack 1"), "(none)");
}
