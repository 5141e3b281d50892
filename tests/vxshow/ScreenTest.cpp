#include "vxshow/Screen.h"

#include <gtest/gtest.h>

namespace vxshow::test {

namespace {

constexpr ScreenSize small{4, 6};

/// What is drawn, with each control sequence as its letter in angle brackets.
std::string seen(std::string text) {
    for (std::string const sequence : {"\x1b[H", "\x1b[K", "\x1b[J"}) {
        for (auto at = text.find(sequence); at != std::string::npos; at = text.find(sequence)) {
            text.replace(at, sequence.size(), std::string("<") + sequence.back() + ">");
        }
    }
    return text;
}

} // namespace

TEST(Screen, IsDrawnFromTheTopWithTheRestErased) {
    EXPECT_EQ(seen(drawn("title", {}, "a\nb\n", small)), "<H><K>title\r\n<K>\r\n<K>a\r\n<J>b");
}

TEST(Screen, ShowsTheRemarksUnderTheTitle) {
    EXPECT_EQ(seen(drawn("title", {"one\ntwo"}, "", {9, 9})),
              "<H><K>title\r\n<K>one\r\n<K>two\r\n<J>");
}

TEST(Screen, CutsALineAtTheRightEdge) {
    EXPECT_EQ(seen(drawn("a title", {}, "1234567\n123456\n", small)),
              "<H><K>a titl\r\n<K>\r\n<K>123456\r\n<J>123456");
}

TEST(Screen, CountsACharacterOfSeveralBytesAsOne) {
    EXPECT_EQ(seen(drawn("t", {}, "\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4\n", small)),
              "<H><K>t\r\n<K>\r\n<J>\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4");
}

TEST(Screen, CountsTheLinesForWhichThereIsNoRoom) {
    EXPECT_EQ(seen(drawn("t", {}, "a\nb\nc\nd\n", {4, 20})),
              "<H><K>t\r\n<K>\r\n<K>a\r\n<J>... 3 lines more");
}

TEST(Screen, WhatATerminalObeysIsAQuestionMark) {
    EXPECT_EQ(seen(drawn("t", {},
                         "\x1b[2J\r\x07\x7f\xc2\x9b"
                         "x\n",
                         {4, 20})),
              "<H><K>t\r\n<K>\r\n<J>?[2J????x");
}

} // namespace vxshow::test
