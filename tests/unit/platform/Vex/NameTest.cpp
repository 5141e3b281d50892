#include "Vex/Name.h"

#include <gtest/gtest.h>

#include <set>

using Vex::Name;

TEST(Name, IsOrderedByteByByte) {
    std::set<Name> const names{"leaf2", "leaf10", "Leaf1", "", "leaf1", "\xC3\xA4"};
    std::string order;
    for (Name const & name : names) {
        order += name.stringValue() + "|";
    }
    EXPECT_EQ(order, "|Leaf1|leaf1|leaf10|leaf2|\xC3\xA4|");
}

TEST(Name, ComparesWithTextAndHashesLikeText) {
    Name const name("HSC");
    EXPECT_TRUE(name == "HSC");
    EXPECT_FALSE(name == "hsc");
    EXPECT_EQ(std::hash<Name>()(name), std::hash<Vex::String>()("HSC"));
    EXPECT_EQ(std::hash<Name>()(name), Vex::keyedHash(std::string_view("HSC")));
}

TEST(Name, KeepsArbitraryBytes) {
    Name const name(std::string("a\0b", 3));
    EXPECT_EQ(name.stringValue().size(), 3U);
    EXPECT_NE(name, Name("a"));
}
