#include "vxshow/cli/HelpText.h"

#include <gtest/gtest.h>

namespace {

using vxshow::cli::wrapped;

} // namespace

TEST(HelpText, LinesBreakBetweenWords) {
    EXPECT_EQ(wrapped("one two three", 0, 13), "one two three");
    EXPECT_EQ(wrapped("one two three", 0, 12), "one two\nthree");
    EXPECT_EQ(wrapped("one two three", 0, 7), "one two\nthree");
    EXPECT_EQ(wrapped("one two three", 0, 6), "one\ntwo\nthree");
}

TEST(HelpText, LinesAfterTheFirstAreIndented) {
    EXPECT_EQ(wrapped("one two three", 4, 11), "one two\n    three");
}

TEST(HelpText, AWordThatIsTooLongHasALineOfItsOwn) {
    EXPECT_EQ(wrapped("a 00:1c:73:0a:0b:0c b", 0, 5), "a\n00:1c:73:0a:0b:0c\nb");
    EXPECT_EQ(wrapped("00:1c:73:0a:0b:0c", 8, 4), "00:1c:73:0a:0b:0c");
}

TEST(HelpText, LineBreaksStay) {
    EXPECT_EQ(wrapped("one\ntwo three\n", 2, 20), "one\n  two three");
}

TEST(HelpText, NoTextIsNoLine) {
    EXPECT_EQ(wrapped("", 4, 20), "");
}
