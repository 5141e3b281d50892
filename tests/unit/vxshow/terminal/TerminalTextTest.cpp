#include "vxshow/terminal/TerminalText.h"

#include <gtest/gtest.h>

#include <string>

namespace vxshow::test {

using namespace terminal;

namespace {

/// The listing of a table whose name column is 9 bytes wide, as the library prints it.
std::string table(std::string const & rows) {
    return "Name      VNI      MAC\n"
           "--------- -------- ---\n" +
           rows;
}

/// What is shown for these rows of it.
std::string shownRows(std::string const & rows) {
    auto const start = table("");
    auto const shown = TerminalText::of(table(rows));
    EXPECT_EQ(shown.substr(0, start.size()), start);
    return shown.substr(start.size());
}

} // namespace

TEST(TerminalText, ATableOfAsciiStaysAsItIs) {
    EXPECT_EQ(shownRows("leaf1     10       x  \nspine one 20       y  \nTotal: 2\n"),
              "leaf1     10       x  \nspine one 20       y  \nTotal: 2\n");
}

TEST(TerminalText, ANarrowCharacterOfSeveralBytesTakesOneColumn) {
    EXPECT_EQ(shownRows("leaf1     10       x\nS\u00fcd      20       y\n"),
              "leaf1     10       x\nS\u00fcd       20       y\n");
}

TEST(TerminalText, AWideCharacterTakesTwoColumns) {
    EXPECT_EQ(shownRows("leaf1     10       x\n\u5317\u4eac    20       y\n"),
              "leaf1     10       x\n\u5317\u4eac      20       y\n");
    EXPECT_EQ(shownRows("\U0001F343      20       y\n"), "\U0001F343        20       y\n");
}

TEST(TerminalText, ACharacterThatCombinesTakesNoColumn) {
    EXPECT_EQ(shownRows("Su\u0308d     20       y\n"), "Su\u0308d       20       y\n");
}

TEST(TerminalText, AHiddenCharacterTakesTheColumnOfItsQuestionMark) {
    EXPECT_EQ(shownRows("a\u202eb     20       y\n"), "a?b       20       y\n");
}

TEST(TerminalText, ABlankOfANameStaysWhereItIs) {
    EXPECT_EQ(shownRows("S\u00fcd 1    20       y\n"), "S\u00fcd 1     20       y\n");
}

// Three bytes for each character: three fill the cell.
TEST(TerminalText, ANameThatFillsItsCellIsFollowedByWhatIsMissing) {
    EXPECT_EQ(shownRows("\u5317\u4eac\u5317 20       y\n"), "\u5317\u4eac\u5317    20       y\n");
}

TEST(TerminalText, ANameThatIsCutInsideACharacterShowsWholeCharactersOnly) {
    EXPECT_EQ(shownRows("abcdefgh\xc3 20       y\n"), "abcdefgh  20       y\n");
    EXPECT_EQ(shownRows("\u5317\u4eac"
                        "a\xe5\x8c 20       y\n"),
              "\u5317\u4eac"
              "a     20       y\n");
    EXPECT_EQ(shownRows("abcdef\xf0\x9f\x8d 20       y\n"), "abcdef    20       y\n");
}

TEST(TerminalText, ANameThatIsCutInsideACharacterAtTheEndOfALineShowsWholeCharactersOnly) {
    EXPECT_EQ(shownRows("leaf1     10       ab\xe5\x8c\n"), "leaf1     10       ab  \n");
}

TEST(TerminalText, BytesThatCannotBeginACharacterAreStillQuestionMarks) {
    EXPECT_EQ(shownRows("abcdefgh\xff 20       y\n"), "abcdefgh? 20       y\n");
    EXPECT_EQ(shownRows("abc\xc3 d    20       y\n"), "abc? d    20       y\n");
}

TEST(TerminalText, ACellInTheMiddleIsAligned) {
    EXPECT_EQ(shownRows("leaf1     \u5317\u4eac   x\n"), "leaf1     \u5317\u4eac     x\n");
    EXPECT_EQ(shownRows("\u5317       \u4eac      x\n"), "\u5317        \u4eac       x\n");
}

TEST(TerminalText, ACellThatIsWiderThanItsColumnIsFollowedByOneBlank) {
    EXPECT_EQ(shownRows("S\u00fcdabcdefghi 20       y\n"), "S\u00fcdabcdefghi 20       y\n");
}

// Twelve bytes widen the row; the eight columns of them fit.
TEST(TerminalText, ACellThatIsWiderOnlyInBytesIsFilledUpToItsColumn) {
    EXPECT_EQ(shownRows("\u5317\u4eac\u5317\u4eac 20       y\n"),
              "\u5317\u4eac\u5317\u4eac  20       y\n");
}

TEST(TerminalText, ALateCharacterOfACellThatIsTooLongBelongsToIt) {
    EXPECT_EQ(shownRows("abcdefghij\u00fck 20       y\n"), "abcdefghij\u00fck 20       y\n");
}

TEST(TerminalText, ATableUnderARuleHasTheColumnsOfItsTitles) {
    std::string const start = "------------------\nName      VTEP    \n------------------\n";
    EXPECT_EQ(TerminalText::of(start + "S\u00fcd      10.0.0.1\n          10.0.0.2\n"),
              start + "S\u00fcd       10.0.0.1\n          10.0.0.2\n");
}

TEST(TerminalText, OutsideOfATableNothingIsAdded) {
    std::string const json = "{\n  \"S\u00fcd  x\": \"\u5317  y\"\n}\n";
    EXPECT_EQ(TerminalText::of(json), json);
    EXPECT_EQ(TerminalText::of(table("a         1        x\n\nS\u00fcd      20\n")),
              table("a         1        x\n\nS\u00fcd      20\n"));
}

TEST(TerminalText, PiecesOfAnyLengthAreShownAlike) {
    auto const text = table("S\u00fcd      20       y\n\u5317\u4eac\u5317 20       y\n"
                            "abcdefgh\xc3 20       y\na\xff"
                            "b\u202e    1        z\xe5\x8c\n");
    auto const whole = TerminalText::of(text);
    for (std::size_t length = 1; length < text.size(); ++length) {
        TerminalText pieces;
        std::string shown;
        std::string left;
        for (std::size_t at = 0; at < text.size(); at += length) {
            left.append(text.substr(at, length));
            shown.append(pieces.take(left));
        }
        EXPECT_EQ(shown + (left.empty() ? "" : "?"), whole) << length;
    }
}

TEST(CharacterWidth, IsThatOfTheTerminal) {
    CharacterWidth const width;
    EXPECT_EQ(width.of("a"), 1U);
    EXPECT_EQ(width.of("?"), 1U);
    EXPECT_EQ(width.of("\u00fc"), 1U);
    EXPECT_EQ(width.of("\u5317"), 2U);
    EXPECT_EQ(width.of("\U0001F343"), 2U);
    EXPECT_EQ(width.of("\u0308"), 0U);
}

} // namespace vxshow::test
