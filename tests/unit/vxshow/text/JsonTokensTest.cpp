#include "vxshow/text/JsonTokens.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace text;

namespace {

using namespace std::string_view_literals;

TEST(JsonTokens, SkipsOnlyJsonWhitespace) {
    EXPECT_EQ(pastBlanks(" \t\r\n\v", 0), 4);
    EXPECT_EQ(pastBlanks("  ", 0), 2);
    EXPECT_EQ(pastBlanks("x", 1), 1);
}

TEST(JsonTokens, EndWhereTheNextOneStarts) {
    EXPECT_EQ(tokenAt("{}", 0), "{");
    EXPECT_EQ(tokenAt("12,", 0), "12");
    EXPECT_EQ(tokenAt("x12\"a\"", 1), "12");
    EXPECT_EQ(tokenAt(R"("a\\" : "b")", 0), R"("a\\")");
    EXPECT_EQ(tokenAt(R"("a\" : ")", 0), R"("a\" : ")");
    EXPECT_EQ(tokenAt(R"("a\")", 0), R"("a\")");
}

TEST(JsonTokens, StripsTheQuotesOfAString) {
    EXPECT_EQ(stringContent(R"("a\"b")"), R"(a\"b)");
    EXPECT_EQ(stringContent(R"("")"), "");
    EXPECT_EQ(stringContent(R"("a\")"), R"(a\")");
    EXPECT_EQ(stringContent("\""), "");
}

TEST(JsonTokens, FindsNoErrorInAValidString) {
    for (auto const text :
         {R"("")"sv, R"("\"\\\/\b\f\n\r\t\u00e9\uFFFF")"sv, R"("\ud83c\udf3f\uDBFF\uDFFF")"sv,
          "\"\x7f\""sv, "\"\xc2\x80\""sv, "\"\xe0\xa0\x80\xed\x9f\xbf\xef\xbf\xbf\""sv,
          "\"\xf0\x90\x80\x80\xf4\x8f\xbf\xbf\""sv}) {
        EXPECT_FALSE(stringError(text, 0)) << text;
    }
}

TEST(JsonTokens, FindsTheFirstWrongByteOfAString) {
    struct Bad {
        std::string_view text;
        std::size_t position;
        std::string_view found;
    };

    for (auto const & bad :
         {Bad{"\"a\x1f\"", 2, "the byte 0x1f"}, Bad{"\"a\nb", 2, "the byte 0x0a"},
          Bad{R"("ab\x")", 3, R"("\x")"}, Bad{R"("\u12g4")", 1, R"("\u12g4")"},
          Bad{R"("\ud800")", 1, R"("\ud800")"}, Bad{R"("\udfff")", 1, R"("\udfff")"},
          Bad{R"("\ud800\ud800")", 1, R"("\ud800")"}, Bad{"\"\x80\"", 1, "the byte 0x80"},
          Bad{"\"\xc1\xbf\"", 1, "the byte 0xc1"}, Bad{"\"\xc3\"", 1, "the byte 0xc3"},
          Bad{"\"\xe0\x9f\xbf\"", 1, "the byte 0xe0"}, Bad{"\"\xed\xa0\x80\"", 1, "the byte 0xed"},
          Bad{"\"\xf0\x8f\xbf\xbf\"", 1, "the byte 0xf0"},
          Bad{"\"\xf4\x90\x80\x80\"", 1, "the byte 0xf4"},
          Bad{"\"\xf5\x80\x80\x80\"", 1, "the byte 0xf5"}, Bad{"\"\xff\"", 1, "the byte 0xff"}}) {
        auto const error = stringError(bad.text, 0);
        ASSERT_TRUE(error) << bad.text;
        EXPECT_EQ(error->position, bad.position) << bad.text;
        EXPECT_EQ(error->found, bad.found);
    }
}

TEST(JsonTokens, ReportsAnUnterminatedString) {
    for (auto const text : {"\""sv, "\"abc"sv, "\"abc\\"sv, "\"abc\\\""sv, "\"\\u12"sv,
                            "\"\\ud83c\\u"sv, "\"\xf0\x9f"sv}) {
        auto const error = stringError(text, 0);
        ASSERT_TRUE(error) << text;
        EXPECT_EQ(error->position, text.size()) << text;
        EXPECT_EQ(error->found, "the end of the file");
        EXPECT_EQ(error->expected, "the quote at the end of a text");
    }
}

TEST(JsonTokens, AcceptsOnlyPlainValues) {
    for (auto const token :
         {"0", "-0", "10", "1.0", "-1.5e+10", "1E5", "0e-1", "true", "false", "null"}) {
        EXPECT_TRUE(isPlainValue(token)) << token;
    }
    for (auto const token : {"", "-", "01", "1.", ".5", "1e", "1e+", "+1", "0x1", "True", "nul",
                             "nulls", "1x", "--1", "NaN", "Infinity"}) {
        EXPECT_FALSE(isPlainValue(token)) << token;
    }
}

} // namespace

} // namespace vxshow::test
