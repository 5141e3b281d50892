#include "tests/unit/modelc/generated/Fleet.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace Test::Fleet {

namespace {

template <class T>
concept HasNot = requires(T const & value) {
    !value;
};

template <class T>
concept SetsOnRvalue = requires {
    T().stopsIs("x", true);
};

} // namespace

TEST(GeneratedValue, StartsWithTheDefaultsOfTheModel) {
    Berth const berth;
    EXPECT_EQ(berth.number(), 0);
    EXPECT_EQ(berth.ship(), "");
    EXPECT_EQ(berth.fee(), 0U);
    EXPECT_TRUE(berth.lit());
    EXPECT_EQ(berth.surveyor(), "none");
}

TEST(GeneratedValue, TakesItsConstructorArgumentsInOrder) {
    Berth berth(7, "Anna", 30);
    EXPECT_EQ(berth.number(), 7);
    EXPECT_EQ(berth.ship(), "Anna");
    EXPECT_EQ(berth.fee(), 30U);
    berth.feeIs(31);
    berth.litIs(false);
    berth.surveyorIs("Eve");
    EXPECT_EQ(berth.fee(), 31U);
    EXPECT_FALSE(berth.lit());
    EXPECT_EQ(berth.surveyor(), "Eve");
}

TEST(GeneratedValue, ComparesEveryAttribute) {
    Berth const berth(7, "Anna", 30);
    EXPECT_EQ(berth, Berth(7, "Anna", 30));
    EXPECT_NE(berth, Berth(8, "Anna", 30));
    EXPECT_NE(berth, Berth(7, "Bert", 30));
    EXPECT_NE(berth, Berth(7, "Anna", 31));
    Berth dark = berth;
    dark.litIs(false);
    EXPECT_NE(berth, dark);
    Voyage one(Vex::Name("a"));
    Voyage two(Vex::Name("a"));
    one.stopsIs("Riga", true);
    EXPECT_NE(one, two);
    two.stopsIs("Riga", true);
    EXPECT_EQ(one, two);
    two.berthsIs(berth);
    EXPECT_NE(one, two);
    EXPECT_EQ(one, one);
}

TEST(GeneratedValue, CopiesAreIndependentOfEachOther) {
    Voyage one(Vex::Name("a"));
    one.stopsIs("Riga", true);
    one.depthIs(Sea::Depth(3));
    Voyage two = one;
    two.stopsIs("Turku", true);
    two.stopsDel("Riga");
    EXPECT_EQ(keysOf(one.stops()), "Riga ");
    EXPECT_EQ(keysOf(two.stops()), "Turku ");
    one = two;
    two.stopsDelAll();
    EXPECT_EQ(keysOf(one.stops()), "Turku ");
    EXPECT_TRUE(two.stops().empty());
    Voyage const moved = std::move(one);
    EXPECT_EQ(keysOf(moved.stops()), "Turku ");
    EXPECT_EQ(moved.depth().metres(), 3U);
}

TEST(GeneratedValue, WithACollectionKnowsWhetherItIsTheDefault) {
    EXPECT_TRUE(!Voyage());
    EXPECT_FALSE(!Voyage(Vex::Name("a")));
    Voyage voyage;
    voyage.stopsIs("Riga", false);
    EXPECT_FALSE(!voyage);
    voyage.stopsDel("Riga");
    EXPECT_TRUE(!voyage);
    static_assert(HasNot<Voyage>);
    static_assert(!HasNot<Berth>, "a value without a collection has no operator!");
}

TEST(GeneratedValue, CannotBeChangedAsATemporary) {
    static_assert(!SetsOnRvalue<Voyage>);
    static_assert(std::is_copy_constructible_v<Voyage> && std::is_copy_assignable_v<Voyage>);
    static_assert(std::is_nothrow_move_constructible_v<Voyage>);
}

TEST(GeneratedValueCollection, InsertsOrReplacesByTheKeyOfTheValue) {
    auto const harbour = harbourFactory();
    harbour->berthIs(Berth(4, "Anna", 10));
    harbour->berthIs(Berth(3, "Bert", 10));
    harbour->berthIs(Berth(4, "Carl", 20));
    EXPECT_EQ(keysOf(harbour->berth()), "3 4 ");
    EXPECT_EQ(harbour->berth(4), Berth(4, "Carl", 20));
    EXPECT_TRUE(harbour->berthHas(3));
    EXPECT_FALSE(harbour->berthHas(5));
    EXPECT_EQ(harbour->berth(5), Berth());
    EXPECT_EQ(harbour->berth().size(), 2U) << "a lookup never inserts";
}

TEST(GeneratedValueCollection, RemovalReturnsTheValueOrTheDefault) {
    auto const harbour = harbourFactory();
    harbour->berthIs(Berth(4, "Anna", 10));
    EXPECT_EQ(harbour->berthDel(5), Berth());
    EXPECT_EQ(harbour->berth().size(), 1U);
    EXPECT_EQ(harbour->berthDel(4), Berth(4, "Anna", 10));
    EXPECT_EQ(harbour->berthDel(4), Berth());
    harbour->berthIs(Berth(1, "", 0));
    harbour->berthIs(Berth(2, "", 0));
    harbour->berthDelAll();
    EXPECT_TRUE(harbour->berth().empty());
}

TEST(GeneratedValueCollection, RemovalByIteratorKeepsTheIteratorsPlace) {
    auto const harbour = harbourFactory();
    for (U16 const number : std::initializer_list<U16>{1, 2, 3}) {
        harbour->berthIs(Berth(number, "Ship", number));
    }
    Harbour::BerthIterator at = harbour->berth().begin();
    ++at;
    EXPECT_EQ(harbour->berthDel(at).fee(), 2U);
    EXPECT_EQ(at->number(), 2) << "an iterator keeps its entry alive";
    EXPECT_EQ(at->ship(), "Ship");
    EXPECT_EQ(harbour->berthDel(at), Berth()) << "its entry is gone already";
    ++at;
    EXPECT_EQ(at->number(), 3);
    Harbour::BerthIterator end = harbour->berth().end();
    EXPECT_EQ(harbour->berthDel(end), Berth());
    EXPECT_EQ(keysOf(harbour->berth()), "1 3 ");
}

TEST(GeneratedValueCollection, IterationFindsItsPlaceAgainAfterAChange) {
    auto const harbour = harbourFactory();
    for (U16 const number : std::initializer_list<U16>{10, 20, 30}) {
        harbour->berthIs(Berth(number, "", 0));
    }
    std::string met;
    for (auto const & berth : harbour->berth()) {
        met += std::to_string(berth.number()) + " ";
        if (berth.number() == 20) {
            harbour->berthIs(Berth(15, "", 0));
            harbour->berthIs(Berth(25, "", 0));
            harbour->berthDel(20);
        }
    }
    EXPECT_EQ(met, "10 20 25 30 ");
}

TEST(GeneratedValueCollection, HoldsImportedValuesByTheirKey) {
    auto const harbour = harbourFactory();
    harbour->buoyIs(Sea::Buoy(Vex::Name("b"), 1));
    harbour->buoyIs(Sea::Buoy(Vex::Name("a"), 2));
    harbour->buoyIs(Sea::Buoy(Vex::Name("b"), 3));
    EXPECT_EQ(keysOf(harbour->buoy()), "a b ");
    EXPECT_EQ(harbour->buoy("b").height(), 3U);
    EXPECT_EQ(harbour->buoyDel("a").height(), 2U);
    EXPECT_EQ(harbour->buoyDel("a"), Sea::Buoy());
}

} // namespace Test::Fleet
