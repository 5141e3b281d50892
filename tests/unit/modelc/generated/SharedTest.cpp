#include "tests/unit/modelc/generated/Fleet.h"

#include <gtest/gtest.h>

namespace Test::Fleet {

namespace {

Vex::Ptr<Sea::Chart const> chart(U32 sheet) {
    return Vex::makePtr<Sea::Chart>(sheet);
}

Vex::Ptr<Captain const> captain(char const * name) {
    return Vex::makePtr<Captain>(name, nullptr);
}

} // namespace

TEST(GeneratedEntityPointer, IsSetReplacedAndDropped) {
    auto const harbour = harbourFactory();
    EXPECT_EQ(harbour->pilot(), nullptr);
    auto const anna = captain("Anna");
    harbour->pilotIs(anna);
    EXPECT_EQ(harbour->pilot(), anna);
    EXPECT_EQ(anna->references(), 2U);
    harbour->pilotIs(nullptr);
    EXPECT_EQ(harbour->pilot(), nullptr);
    EXPECT_EQ(anna->references(), 1U);
}

TEST(GeneratedEntityPointer, CanBeSettableAsAConstructorArgument) {
    auto const sheet = chart(1);
    auto const anna = Vex::makePtr<Captain>("Anna", sheet);
    EXPECT_EQ(anna->chart(), sheet);
    anna->chartIs(nullptr);
    EXPECT_EQ(anna->chart(), nullptr);
}

TEST(GeneratedSharedCollection, StoresPointersUnderSeparateKeys) {
    auto const harbour = harbourFactory();
    auto const one = chart(1);
    EXPECT_EQ(harbour->chartIs("north", one), one);
    EXPECT_EQ(harbour->chartIs("south", one), one);
    EXPECT_EQ(one->references(), 3U);
    EXPECT_EQ(harbour->chart("north"), one);
    EXPECT_EQ(harbour->chart("west"), nullptr);
    EXPECT_TRUE(harbour->chartHas("south"));
    EXPECT_EQ(keysOf(harbour->chart()), "north south ");
    EXPECT_EQ(harbour->chart().begin()->sheet(), 1U);
}

TEST(GeneratedSharedCollection, ReplacesOnePointerWithAnother) {
    auto const harbour = harbourFactory();
    auto const one = chart(1);
    auto const two = chart(2);
    harbour->chartIs("north", one);
    EXPECT_EQ(harbour->chartIs("north", two), two);
    EXPECT_EQ(harbour->chart("north"), two);
    EXPECT_EQ(one->references(), 1U);
    EXPECT_EQ(harbour->chartIs("north", two), two);
    EXPECT_EQ(two->references(), 2U);
    EXPECT_EQ(harbour->chart().size(), 1U);
}

TEST(GeneratedSharedCollection, SharesAPointerThatItHoldsUnderAnotherKey) {
    auto const harbour = harbourFactory();
    auto const one = chart(1);
    auto const two = chart(2);
    harbour->chartIs("north", one);
    harbour->chartIs("south", two);
    Vex::Ptr<Sea::Chart const> const * south = nullptr;
    {
        auto position = harbour->chart().begin();
        ++position;
        south = &position.slot().element();
    }
    // Without an iterator to hold them, the entries after a new one move in memory.
    EXPECT_EQ(harbour->chartIs("east", *south), two);
    EXPECT_EQ(harbour->chart("east"), two);
    EXPECT_EQ(harbour->chart("north"), one);
    EXPECT_EQ(harbour->chart("south"), two);
    EXPECT_EQ(one->references(), 2U);
    EXPECT_EQ(two->references(), 3U);
}

TEST(GeneratedSharedCollection, ANullPointerRemovesTheEntry) {
    auto const harbour = harbourFactory();
    auto const one = chart(1);
    harbour->chartIs("north", one);
    EXPECT_EQ(harbour->chartIs("north", nullptr), nullptr);
    EXPECT_FALSE(harbour->chartHas("north"));
    EXPECT_EQ(one->references(), 1U);
    EXPECT_EQ(harbour->chartIs("north", nullptr), nullptr);
    EXPECT_TRUE(harbour->chart().empty());
}

TEST(GeneratedSharedCollection, RemovalReturnsThePointerOrNull) {
    auto const harbour = harbourFactory();
    auto const one = chart(1);
    harbour->chartIs("north", one);
    harbour->chartIs("south", one);
    EXPECT_EQ(harbour->chartDel("west"), nullptr);
    EXPECT_EQ(harbour->chartDel("north"), one);
    Harbour::ChartIterator at = harbour->chart().begin();
    EXPECT_EQ(harbour->chartDel(at), one);
    EXPECT_EQ(harbour->chartDel(at), nullptr);
    EXPECT_EQ(at.key(), "south");
    EXPECT_EQ(at->sheet(), 1U);
    harbour->chartIs("north", one);
    harbour->chartDelAll();
    EXPECT_TRUE(harbour->chart().empty());
}

TEST(GeneratedSharedCollection, TakesTheKeyFromTheEntity) {
    auto const harbour = harbourFactory();
    auto const bert = captain("Bert");
    auto const anna = captain("Anna");
    EXPECT_EQ(harbour->captainIs(bert), bert);
    EXPECT_EQ(harbour->captainIs(anna), anna);
    EXPECT_EQ(keysOf(harbour->captain()), "Anna Bert ");
    auto const other = captain("Anna");
    EXPECT_EQ(harbour->captainIs(other), other);
    EXPECT_EQ(harbour->captain("Anna"), other);
    EXPECT_EQ(anna->references(), 1U);
    EXPECT_EQ(harbour->captain().size(), 2U);
    EXPECT_EQ(harbour->captainIs(nullptr), nullptr);
    EXPECT_EQ(harbour->captain().size(), 2U);
    EXPECT_EQ(harbour->captainDel("Anna"), other);
    EXPECT_EQ(harbour->captainDel("Anna"), nullptr);
}

} // namespace Test::Fleet
