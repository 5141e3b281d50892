#include "tests/unit/modelc/generated/Fleet.h"

#include <gtest/gtest.h>

namespace Test::Fleet {

namespace {

template <class T>
concept HasWreckIteratorDel = requires(T & harbour, typename T::WreckIterator & at) {
    harbour.wreckDel(at);
};

template <class T>
concept HasFlagIteratorDel = requires(T & harbour, typename T::FlagIterator & at) {
    harbour.flagDel(at);
};

} // namespace

TEST(GeneratedSet, StoresAFlagWithEachKey) {
    auto const harbour = harbourFactory();
    harbour->flagIs("red", true);
    harbour->flagIs("blue", false);
    EXPECT_TRUE(harbour->flag("red"));
    EXPECT_FALSE(harbour->flag("blue"));
    EXPECT_FALSE(harbour->flag("green"));
    EXPECT_TRUE(harbour->flagHas("blue"));
    EXPECT_FALSE(harbour->flagHas("green"));
    harbour->flagIs("blue", true);
    EXPECT_TRUE(harbour->flag("blue"));
    EXPECT_EQ(keysOf(harbour->flag()), "blue red ");
}

TEST(GeneratedSet, RemovalReturnsTheStoredFlag) {
    auto const harbour = harbourFactory();
    harbour->flagIs("red", true);
    harbour->flagIs("blue", false);
    EXPECT_FALSE(harbour->flagDel("green"));
    EXPECT_EQ(harbour->flag().size(), 2U);
    EXPECT_TRUE(harbour->flagDel("red"));
    EXPECT_FALSE(harbour->flagDel("blue"));
    EXPECT_TRUE(harbour->flag().empty());
    harbour->flagIs("red", true);
    Harbour::FlagIterator at = harbour->flag().begin();
    EXPECT_TRUE(harbour->flagDel(at));
    EXPECT_EQ(at.key(), "red");
    EXPECT_FALSE(harbour->flagDel(at));
    Harbour::FlagIterator end = harbour->flag().end();
    EXPECT_FALSE(harbour->flagDel(end));
    harbour->flagIs("red", true);
    harbour->flagDelAll();
    EXPECT_TRUE(harbour->flag().empty());
}

TEST(GeneratedSet, HoldsNumbersInNumericOrder) {
    auto const log = logFactory();
    for (U32 number : {256U, 9U, 10U}) {
        log->lineIs(number, true);
    }
    EXPECT_EQ(keysOf(log->line()), "9 10 256 ");
}

TEST(GeneratedHashedSet, IsLookedUpFilledAndEmptied) {
    auto const harbour = harbourFactory();
    harbour->wreckIs("Vasa", true);
    harbour->wreckIs("Mars", true);
    harbour->wreckIs("Mars", false);
    EXPECT_TRUE(harbour->wreck("Vasa"));
    EXPECT_FALSE(harbour->wreck("Mars"));
    EXPECT_TRUE(harbour->wreckHas("Mars"));
    EXPECT_FALSE(harbour->wreck("Titanic"));
    EXPECT_EQ(harbour->wreck().size(), 2U);
    EXPECT_TRUE(harbour->wreckDel("Vasa"));
    EXPECT_FALSE(harbour->wreckDel("Vasa"));
    std::string met;
    for (auto const & name : harbour->wreck()) {
        met += name.stringValue();
    }
    EXPECT_EQ(met, "Mars");
    harbour->wreckDelAll();
    EXPECT_TRUE(harbour->wreck().empty());
}

TEST(GeneratedHashedSet, HasNoRemovalByIterator) {
    static_assert(!HasWreckIteratorDel<Harbour>);
    static_assert(HasFlagIteratorDel<Harbour>);
}

} // namespace Test::Fleet
