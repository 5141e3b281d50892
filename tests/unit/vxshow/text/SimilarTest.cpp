#include "vxshow/text/Similar.h"

#include <gtest/gtest.h>

namespace {

using vxshow::text::editDistance;
using vxshow::text::mostSimilar;

} // namespace

TEST(Similar, TheDistanceCountsChangesAdditionsRemovalsAndSwaps) {
    EXPECT_EQ(editDistance("", ""), 0);
    EXPECT_EQ(editDistance("leaf1", "leaf1"), 0);
    EXPECT_EQ(editDistance("leaf1", "leaf2"), 1);
    EXPECT_EQ(editDistance("leaf1", "leaf"), 1);
    EXPECT_EQ(editDistance("eaf1", "leaf1"), 1);
    EXPECT_EQ(editDistance("laef1", "leaf1"), 1);
    EXPECT_EQ(editDistance("", "abc"), 3);
    EXPECT_EQ(editDistance("abc", ""), 3);
    EXPECT_EQ(editDistance("kitten", "sitting"), 3);
}

TEST(Similar, TheNearestCandidateIsTheFirstOfSeveral) {
    EXPECT_EQ(mostSimilar("leaf3", {"leaf1", "leaf2"}), "leaf1");
    EXPECT_EQ(mostSimilar("recieved", {"advertised", "received"}), "received");
}

TEST(Similar, CaseDoesNotMatter) {
    EXPECT_EQ(mostSimilar("LEAF3", {"leaf1", "leaf3"}), "leaf3");
    EXPECT_EQ(mostSimilar("hsc", {"HSC"}), "HSC");
}

TEST(Similar, WhatDiffersInMoreThanAThirdIsNotSimilar) {
    EXPECT_EQ(mostSimilar("foo", {"mac", "arp", "router"}), std::nullopt);
    EXPECT_EQ(mostSimilar("spine1", {"leaf1"}), std::nullopt);
    EXPECT_EQ(mostSimilar("abc", {"abxyc"}), std::nullopt);
    EXPECT_EQ(mostSimilar("abcdef", {"abxyef"}), "abxyef");
}

TEST(Similar, ATextWithNothingInCommonIsNotSimilarHoweverShort) {
    EXPECT_EQ(mostSimilar("a", {"b", ""}), std::nullopt);
    EXPECT_EQ(mostSimilar("", {"a", ""}), std::nullopt);
    EXPECT_EQ(mostSimilar("ab", {"a"}), "a");
}

TEST(Similar, TheTextItselfIsNoSuggestion) {
    EXPECT_EQ(mostSimilar("all", {"all"}), std::nullopt);
    EXPECT_EQ(mostSimilar("leaf1", {"leaf1", "leaf2"}), "leaf2");
}

TEST(Similar, WithoutCandidatesNothingIsSimilar) {
    EXPECT_EQ(mostSimilar("leaf1", {}), std::nullopt);
}
