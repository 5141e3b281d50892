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

TEST(ControlCharacters, CharactersThatAreNotSeenAreKnown) {
    for (auto const character :
         {"\u200b", "\u200f", "\u202a", "\u202e", "\u2066", "\u2069", "\ufeff"}) {
        EXPECT_TRUE(isInvisible(character)) << character;
    }
}

TEST(ControlCharacters, TheNeighboursOfCharactersThatAreNotSeenAreSeen) {
    for (auto const character : {"a", "\u00e4", "\u200a", "\u2010", "\u2029", "\u202f", "\u2065",
                                 "\u206a", "\ufefe", "\uff00", "\U0001f33f"}) {
        EXPECT_FALSE(isInvisible(character)) << character;
    }
}

} // namespace

} // namespace vxshow::test
