#include "Vex/Errors.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_view_literals;

TEST(Quoted, LeavesPrintableTextUnchanged) {
    EXPECT_EQ(Vex::quoted(""), "''");
    EXPECT_EQ(Vex::quoted("leaf-1 ~!\"%s"), "'leaf-1 ~!\"%s'");
}

TEST(Quoted, EscapesWhatCouldControlATerminal) {
    EXPECT_EQ(Vex::quoted("\x1b[2Ja\n\t\r"), "'\\x1b[2Ja\\x0a\\x09\\x0d'");
    EXPECT_EQ(Vex::quoted("a\0b"sv), "'a\\x00b'");
    EXPECT_EQ(Vex::quoted("\x7f\x80\x9b\xff"), "'\\x7f\\x80\\x9b\\xff'");
    EXPECT_EQ(Vex::quoted("b\xc3\xbcro"), "'b\\xc3\\xbcro'");
}

TEST(Quoted, EscapesQuotesAndBackslashes) {
    EXPECT_EQ(Vex::quoted("it's"), "'it\\'s'");
    EXPECT_EQ(Vex::quoted("\\x1b"), "'\\\\x1b'");
}

TEST(Quoted, WritesNothingButPrintableAscii) {
    for (int byte = 0; byte < 256; ++byte) {
        for (char const character : Vex::quoted(std::string(3, static_cast<char>(byte)))) {
            EXPECT_GE(character, 0x20) << byte;
            EXPECT_LE(character, 0x7e) << byte;
        }
    }
}

TEST(Quoted, CutsBeyondSixtyBytes) {
    std::string const sixty(60, 'x');
    EXPECT_EQ(Vex::quoted(sixty), "'" + sixty + "'");
    EXPECT_EQ(Vex::quoted(sixty + "y"), "'" + sixty + "'...");
    EXPECT_EQ(Vex::quoted(std::string(1000000, '\n')).size(), 1 + 60 * 4 + 1 + 3U);
}

TEST(Printable, EscapesBytesThatControlATerminal) {
    EXPECT_EQ(Vex::printable("plain \"text\" \\ %s"), "plain \"text\" \\ %s");
    EXPECT_EQ(Vex::printable("\x1b[2J\n\x7f\xc2\x9b"), "\\x1b[2J\\x0a\\x7f\\xc2\\x9b");
}

TEST(ParseError, NamesTheTextAndWhatIsAccepted) {
    EXPECT_STREQ(Vex::ParseError("1\n", "a number").what(), "'1\\x0a': expected a number");
    EXPECT_STREQ(Vex::ParseError("as it stands").what(), "as it stands");
}

TEST(RangeError, NamesTheTextAndWhatIsAccepted) {
    EXPECT_STREQ(Vex::RangeError("9", "at most 8").what(), "'9': expected at most 8");
}

TEST(RefuseNumber, RaisesARangeErrorForALargeNumberAndAParseErrorForOtherText) {
    EXPECT_THROW(Vex::refuseNumber("9", "at most 8"), Vex::RangeError);
    for (auto const * text : {"", "-1", "09", "9x"}) {
        EXPECT_THROW(Vex::refuseNumber(text, "at most 8"), Vex::ParseError) << text;
    }
}

TEST(Errors, AreCaughtAsTheirBases) {
    EXPECT_THROW(throw Vex::ParseError("a", "b"), Vex::Error);
    EXPECT_THROW(throw Vex::RangeError("a"), Vex::Error);
    EXPECT_THROW(throw Vex::Error("a"), std::runtime_error);
}
