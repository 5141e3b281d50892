#include "vxshow/terminal/Screen.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace terminal;

namespace {

constexpr ScreenSize small{5, 6};

/// What is drawn, with each control sequence as its letter in angle brackets.
std::string seen(Drawing const & drawing) {
    std::string text = drawing.text;
    for (std::string const sequence : {"\x1b[H", "\x1b[K", "\x1b[J"}) {
        for (auto at = text.find(sequence); at != std::string::npos; at = text.find(sequence)) {
            text.replace(at, sequence.size(), std::string("<") + sequence.back() + ">");
        }
    }
    return text;
}

} // namespace

TEST(Screen, IsDrawnFromTheTopWithTheRestErased) {
    EXPECT_EQ(seen(drawScreen("title", {}, "a\nb\n", small)),
              "<H><K>title\r\n<K>\r\n<K>a\r\n<K>b\r\n<J>");
}

TEST(Screen, ShowsTheRemarksUnderTheTitle) {
    EXPECT_EQ(seen(drawScreen("title", {"one\ntwo"}, "", {9, 9})),
              "<H><K>title\r\n<K>one\r\n<K>two\r\n<K>\r\n<J>");
}

TEST(Screen, CutsALineAtTheRightEdge) {
    EXPECT_EQ(seen(drawScreen("a title", {}, "1234567\n123456\n", small)),
              "<H><K>a titl\r\n<K>\r\n<K>123456\r\n<K>123456\r\n<J>");
}

TEST(Screen, CountsACharacterOfSeveralBytesAsOne) {
    EXPECT_EQ(seen(drawScreen("t", {}, "\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4\n", small)),
              "<H><K>t\r\n<K>\r\n<K>\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4\r\n<J>");
}

TEST(Screen, CutsAWideCharacterThatDoesNotFitWhole) {
    EXPECT_EQ(seen(drawScreen("t", {}, "\u5317\u5317\u5317\u5317\na\u5317\u5317\u5317\n", small)),
              "<H><K>t\r\n<K>\r\n<K>\u5317\u5317\u5317\r\n<K>a\u5317\u5317\r\n<J>");
}

TEST(Screen, AlignsTables) {
    EXPECT_EQ(seen(drawScreen("t", {}, "Name  VNI\n---- ---\n\u5317    10\n", {9, 20})),
              "<H><K>t\r\n<K>\r\n<K>Name  VNI\r\n<K>---- ---\r\n<K>\u5317     10\r\n<J>");
}

TEST(Screen, KeepsTheBottomLineForTheCursor) {
    EXPECT_EQ(seen(drawScreen("t", {}, "a\nb\n", small)), "<H><K>t\r\n<K>\r\n<K>a\r\n<K>b\r\n<J>");
}

TEST(Screen, OfOneLineShowsOne) {
    EXPECT_EQ(seen(drawScreen("t", {}, "a\nb\n", {1, 20})), "<H><K>... 4 lines more\r\n<J>");
}

TEST(Screen, CountsTheLinesThatDoNotFit) {
    EXPECT_EQ(seen(drawScreen("t", {}, "a\nb\nc\nd\n", {5, 20})),
              "<H><K>t\r\n<K>\r\n<K>a\r\n<K>... 3 lines more\r\n<J>");
}

TEST(Screen, ControlCharactersBecomeQuestionMarks) {
    EXPECT_EQ(seen(drawScreen("t", {},
                              "\x1b[2J\r\x07\x7f\xc2\x9b"
                              "x\n",
                              {4, 20})),
              "<H><K>t\r\n<K>\r\n<K>?[2J????x\r\n<J>");
}

TEST(Screen, InvisibleCharactersBecomeQuestionMarks) {
    EXPECT_EQ(seen(drawScreen("t", {}, "a\u202eb\u200bc\u2066\ufeff\n", {4, 20})),
              "<H><K>t\r\n<K>\r\n<K>a?b?c??\r\n<J>");
}

TEST(Screen, AnIncompleteCharacterBecomesAQuestionMark) {
    EXPECT_EQ(seen(drawScreen("t", {}, "a\xe2\x82 b\xff\n", {4, 20})),
              "<H><K>t\r\n<K>\r\n<K>a? b?\r\n<J>");
}

TEST(Screen, ShowsTheListingFromALineOn) {
    auto const drawing = drawScreen("t", {}, "a\nb\nc\nd\ne\nf\n", {7, 20}, Tables::aligned, 2);
    EXPECT_EQ(seen(drawing),
              "<H><K>t\r\n<K>\r\n<K>c\r\n<K>d\r\n<K>e\r\n<K>lines 3 to 5 of 6\r\n<J>");
    EXPECT_EQ(drawing.page, 3U);
    EXPECT_EQ(drawing.lastStart, 3U);
}

TEST(Screen, EndsWithTheLastLineOfTheListing) {
    EXPECT_EQ(seen(drawScreen("t", {}, "a\nb\nc\nd\ne\nf\n", {7, 20}, Tables::aligned, 100)),
              "<H><K>t\r\n<K>\r\n<K>d\r\n<K>e\r\n<K>f\r\n<K>lines 4 to 6 of 6\r\n<J>");
}

TEST(Screen, AListingThatFitsHasOnePage) {
    auto const drawing = drawScreen("t", {}, "a\nb\n", {5, 20}, Tables::aligned, 1);
    EXPECT_EQ(seen(drawing), "<H><K>t\r\n<K>\r\n<K>a\r\n<K>b\r\n<J>");
    EXPECT_EQ(drawing.lastStart, 0U);
}

TEST(Screen, RemarksTakeAtMostAThird) {
    std::vector<std::string> const remarks{"one", "two", "three\nfour"};
    EXPECT_EQ(seen(drawScreen("t", remarks, "a\n", {9, 20})),
              "<H><K>t\r\n<K>one\r\n<K>two\r\n<K>2 remarks more\r\n<K>\r\n<K>a\r\n<J>");
    EXPECT_EQ(seen(drawScreen("t", remarks, "a\n", {12, 20})),
              "<H><K>t\r\n<K>one\r\n<K>two\r\n<K>three\r\n<K>four\r\n<K>\r\n<K>a\r\n<J>");
    EXPECT_EQ(seen(drawScreen("t", remarks, "a\n", {5, 20})),
              "<H><K>t\r\n<K>4 remarks\r\n<K>\r\n<K>a\r\n<J>");
}

} // namespace vxshow::test
