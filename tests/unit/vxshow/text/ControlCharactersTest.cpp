#include "vxshow/text/ControlCharacters.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace text;

namespace {

TEST(ControlCharacters, AreFoundAnywhereInAText) {
    for (auto const text :
         {"\x01", "a\x1f", "\nb", "a\tb", "\x7f", "\xc2\x80", "a\xc2\x9f", "\x1b[m"}) {
        EXPECT_TRUE(hasControls(text)) << text;
    }
    EXPECT_TRUE(hasControls(std::string_view("a\0b", 3)));
}

TEST(ControlCharacters, AreNotOtherCharactersWithTheSameBytes) {
    for (auto const text :
         {"", " ", "a b~", "\xc2\xa0", "\xc3\x80", "\xe2\x80\x9f", "\xf0\x9f\x8c\xbf"}) {
        EXPECT_FALSE(hasControls(text)) << text;
    }
}

} // namespace

} // namespace vxshow::test
