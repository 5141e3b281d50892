#include "vxshow/text/Quoting.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace text;

namespace {

TEST(Quoting, TruncatesALongText) {
    EXPECT_EQ(shownText(std::string(60, 'a')), std::string(60, 'a'));
    EXPECT_EQ(shownText(std::string(61, 'a')), std::string(60, 'a') + "...");
}

TEST(Quoting, ClosesTheQuotesAfterATruncatedText) {
    EXPECT_EQ(shownInQuotes("a b\x1b"), "\"a b\\x1b\"");
    EXPECT_EQ(shownInQuotes(std::string(61, 'a')), '"' + std::string(60, 'a') + "...\"");
}

TEST(Quoting, ShowsEachKindOfToken) {
    std::string_view const document = R"({"a\"b" : [12x, tru}])";
    EXPECT_EQ(shownToken(document, 0), "an object");
    EXPECT_EQ(shownToken(document, 1), R"("a\"b")");
    EXPECT_EQ(shownToken(document, 8), "':'");
    EXPECT_EQ(shownToken(document, 10), "an array");
    EXPECT_EQ(shownToken(document, 11), "12x");
    EXPECT_EQ(shownToken(document, 14), "','");
    EXPECT_EQ(shownToken(document, 16), "tru");
    EXPECT_EQ(shownToken(document, 19), "'}'");
    EXPECT_EQ(shownToken(document, 20), "']'");
    EXPECT_EQ(shownToken(document, 21), "the end of the file");
}

TEST(Quoting, ClosesTheQuotesOfAnUnterminatedText) {
    EXPECT_EQ(shownToken("\"abc\\\"", 0), "\"abc\\\"\"");
    EXPECT_EQ(shownToken("\"", 0), "\"\"");
}

TEST(Quoting, QuotesMembersThatAreNotPlainWords) {
    EXPECT_EQ(shownMember("leaf-1_a"), "leaf-1_a");
    EXPECT_EQ(shownMember("10"), "\"10\"");
    EXPECT_EQ(shownMember("-a"), "\"-a\"");
    EXPECT_EQ(shownMember(""), "\"\"");
    EXPECT_EQ(shownMember("a.b"), "\"a.b\"");
    EXPECT_EQ(shownMember("a\x1b"), "\"a\\x1b\"");
    EXPECT_EQ(shownMember(std::string(61, 'a')), '"' + std::string(60, 'a') + "...\"");
}

} // namespace

} // namespace vxshow::test
