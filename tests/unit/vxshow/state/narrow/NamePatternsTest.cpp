#include "vxshow/state/narrow/NamePatterns.h"

#include <gtest/gtest.h>

namespace {

using vxshow::state::narrow::isPattern;
using vxshow::state::narrow::matchesPattern;
using vxshow::state::narrow::NamePatterns;

} // namespace

TEST(NamePatterns, AStarStandsForAnyText) {
    for (char const * name : {"leaf", "leaf1", "leaf-12"}) {
        EXPECT_TRUE(matchesPattern("leaf*", name)) << name;
    }
    EXPECT_TRUE(matchesPattern("*", ""));
    EXPECT_TRUE(matchesPattern("*-a-*", "x-a-b-a-y"));
    EXPECT_TRUE(matchesPattern("a*b*c", "aXbYbZc"));
    EXPECT_FALSE(matchesPattern("a*b*c", "aXbYbZ"));
    EXPECT_FALSE(matchesPattern("leaf*", "Leaf1"));
    EXPECT_FALSE(matchesPattern("leaf*", "spine-leaf1"));
    EXPECT_TRUE(matchesPattern("a**", "a"));
}

TEST(NamePatterns, AQuestionMarkStandsForOneCharacter) {
    EXPECT_TRUE(matchesPattern("leaf?", "leaf1"));
    EXPECT_FALSE(matchesPattern("leaf?", "leaf"));
    EXPECT_FALSE(matchesPattern("leaf?", "leaf12"));
    EXPECT_TRUE(matchesPattern("caf?", "caf\u00e9"));
    EXPECT_TRUE(matchesPattern("?", "\xff"));
    EXPECT_FALSE(matchesPattern("?", "ab"));
    EXPECT_TRUE(matchesPattern("*?c", "abc"));
    EXPECT_FALSE(matchesPattern("?*", ""));
}

TEST(NamePatterns, EveryOtherCharacterStandsForItself) {
    EXPECT_TRUE(matchesPattern("[a]\\.+*", "[a]\\.+x"));
    EXPECT_FALSE(matchesPattern("[a]*", "a"));
    EXPECT_TRUE(matchesPattern(std::string_view("a\0*", 3), std::string_view("a\0b", 3)));
    EXPECT_FALSE(matchesPattern("", "a"));
    EXPECT_TRUE(matchesPattern("", ""));
}

/// With backtracking to every star, this would take 2^40 steps.
TEST(NamePatterns, ManyStarsTakeNoLongerThanTheProductOfTheLengths) {
    std::string pattern;
    for (int i = 0; i < 40; ++i) {
        pattern += "*a";
    }
    EXPECT_FALSE(matchesPattern(pattern + "b", std::string(20000, 'a')));
    EXPECT_TRUE(matchesPattern(pattern, std::string(20000, 'a')));
}

TEST(NamePatterns, OnlyStarAndQuestionMarkMakeAPattern) {
    EXPECT_TRUE(isPattern("a*"));
    EXPECT_TRUE(isPattern("?"));
    EXPECT_FALSE(isPattern("[a-z]"));
    EXPECT_FALSE(isPattern(""));
}

TEST(NamePatterns, ANameIsInTheSetByItselfOrByAPattern) {
    NamePatterns set;
    EXPECT_TRUE(set.empty());
    set.addName("spine*");
    set.addPattern("leaf*");
    EXPECT_FALSE(set.empty());
    EXPECT_TRUE(set.contains("leaf1"));
    EXPECT_TRUE(set.contains("spine*"));
    EXPECT_FALSE(set.contains("spine1"));
}
