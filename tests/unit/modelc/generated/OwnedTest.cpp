#include "tests/unit/modelc/generated/Fleet.h"

#include "Vex/Reinstantiation.h"

#include <gtest/gtest.h>

namespace Test::Fleet {

namespace {

std::string errorOf(auto action) {
    try {
        action();
    } catch (Vex::ReinstantiationError const & error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(GeneratedOwnedEntity, IsCreatedOnDemandAndRemoved) {
    auto const harbour = harbourFactory();
    EXPECT_EQ(harbour->log(), nullptr);
    auto const log = harbour->logIs();
    ASSERT_NE(log, nullptr);
    EXPECT_TRUE(log->hasNotificationActive());
    log->lineIs(1, true);
    EXPECT_EQ(harbour->logIs(), log);
    EXPECT_TRUE(harbour->log()->line(1)) << "an existing entity keeps its content";
    EXPECT_EQ(std::as_const(*harbour).log(), log);
    static_assert(std::is_same_v<decltype(std::as_const(*harbour).log()), Vex::Ptr<Log const>>);
    static_assert(std::is_same_v<decltype(harbour->log()), Vex::Ptr<Log>>);
    harbour->logDel();
    EXPECT_EQ(harbour->log(), nullptr);
    harbour->logDel();
    EXPECT_NE(harbour->logIs(), log);
    EXPECT_EQ(log->references(), 1U);
}

TEST(GeneratedOwnedEntity, NeedsNoCreatorOfItsOwn) {
    auto const harbour = harbourFactory();
    EXPECT_TRUE(harbour->watchIs()->hasNotificationActive());
    EXPECT_EQ(harbour->watchIs(), harbour->watch());
}

TEST(GeneratedOwnedCollection, FindsOrCreates) {
    auto const harbour = harbourFactory();
    auto const bow = harbour->holdIs("bow");
    EXPECT_TRUE(bow->hasNotificationActive());
    EXPECT_EQ(bow->name(), "bow");
    bow->crateIs("c1", 5, Sea::Depth(2), "Anna");
    EXPECT_EQ(harbour->holdIs("bow"), bow);
    EXPECT_EQ(bow->crate().size(), 1U);
    EXPECT_NE(harbour->holdIs("aft"), bow);
    EXPECT_EQ(keysOf(harbour->hold()), "aft bow ");
    EXPECT_EQ(harbour->hold("bow"), bow);
    EXPECT_EQ(harbour->hold("mid"), nullptr);
    EXPECT_TRUE(harbour->holdHas("aft"));
    EXPECT_FALSE(harbour->holdHas("mid"));
    EXPECT_EQ(harbour->hold().size(), 2U);
    static_assert(std::is_same_v<decltype(harbour->hold("x")), Vex::Ptr<Hold>>);
    static_assert(
        std::is_same_v<decltype(std::as_const(*harbour).hold("x")), Vex::Ptr<Hold const>>);
}

TEST(GeneratedOwnedCollection, ReturnsTheStoredElementForTheSameArguments) {
    auto const hold = Hold::HoldIs("bow");
    auto const crate = hold->crateIs("c1", 5, Sea::Depth(2), "Anna");
    crate->sealedIs(true);
    EXPECT_EQ(hold->crateIs("c1", 5, Sea::Depth(2), "Anna"), crate);
    EXPECT_TRUE(crate->sealed());
    EXPECT_EQ(hold->crate().size(), 1U);
    EXPECT_TRUE(crate->hasNotificationActive());
}

TEST(GeneratedOwnedCollection, RejectsOtherArgumentsAndNamesTheFirstDifference) {
    auto const hold = Hold::HoldIs("bow");
    auto const crate = hold->crateIs("c1", 5, Sea::Depth(2), "Anna");
    auto const version = hold->crate().version();
    EXPECT_EQ(errorOf([&] { hold->crateIs("c1", 6, Sea::Depth(3), "Bert"); }),
              "Test::Fleet::Crate c1: weight cannot change from 5 to 6");
    EXPECT_EQ(errorOf([&] { hold->crateIs("c1", 5, Sea::Depth(3), "Bert"); }),
              "Test::Fleet::Crate c1: depth cannot change from 2m to 3m");
    EXPECT_EQ(errorOf([&] { hold->crateIs("c1", 5, Sea::Depth(2), "Bert"); }),
              "Test::Fleet::Crate c1: owner cannot change from Anna to Bert");
    EXPECT_EQ(hold->crate("c1"), crate);
    EXPECT_EQ(crate->weight(), 5);
    EXPECT_EQ(crate->owner(), "Anna");
    EXPECT_EQ(hold->crate().size(), 1U);
    EXPECT_EQ(hold->crate().version(), version);
}

TEST(GeneratedOwnedCollection, RemovalReturnsTheElementOrNull) {
    auto const harbour = harbourFactory();
    auto const bow = harbour->holdIs("bow");
    EXPECT_EQ(harbour->holdDel("aft"), nullptr);
    EXPECT_EQ(harbour->hold().size(), 1U);
    EXPECT_EQ(bow->references(), 2U);
    EXPECT_EQ(harbour->holdDel("bow"), bow);
    EXPECT_EQ(bow->references(), 1U);
    EXPECT_EQ(harbour->holdDel("bow"), nullptr);
    EXPECT_NE(harbour->holdIs("bow"), bow);
}

TEST(GeneratedOwnedCollection, RemovalByIteratorKeepsTheElementAlive) {
    auto const harbour = harbourFactory();
    harbour->holdIs("aft");
    harbour->holdIs("bow");
    U64 const before = Hold::vexAllocTrackTypeInfo_.liveCount();
    {
        Harbour::HoldIterator at = harbour->hold().begin();
        EXPECT_EQ(harbour->holdDel(at)->name(), "aft");
        EXPECT_EQ(harbour->holdDel(at), nullptr);
        EXPECT_EQ(at->name(), "aft");
        EXPECT_EQ(Hold::vexAllocTrackTypeInfo_.liveCount(), before);
        ++at;
        EXPECT_EQ(at->name(), "bow");
        ++at;
        EXPECT_FALSE(at);
        EXPECT_EQ(harbour->holdDel(at), nullptr);
    }
    EXPECT_EQ(Hold::vexAllocTrackTypeInfo_.liveCount(), before - 1);
    EXPECT_EQ(keysOf(harbour->hold()), "bow ");
}

TEST(GeneratedOwnedCollection, CanBeClearedDuringIteration) {
    auto const harbour = harbourFactory();
    for (auto const * name : {"a", "b", "c"}) {
        harbour->holdIs(name);
    }
    std::string met;
    for (auto at = harbour->hold().begin(); at; ++at) {
        met += at->name().stringValue();
        harbour->holdDelAll();
    }
    EXPECT_EQ(met, "a");
    EXPECT_TRUE(harbour->hold().empty());
}

} // namespace Test::Fleet
