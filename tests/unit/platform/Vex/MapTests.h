#pragma once

#include "Nolt/IpAddr.h"
#include "Vex/Ptr.h"
#include "Vex/Slot.h"
#include "tests/unit/platform/Vex/Counted.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

/// Tests of the guarantees that both keyed collections of the framework give.
namespace map_tests {

struct Entry {
    Nolt::IpAddr key;
    int number = 0;

    Nolt::IpAddr const & address() const { return key; }

    bool operator==(Entry const &) const = default;
};

using EntrySlot = Vex::ValueSlot<Nolt::IpAddr, Entry, &Entry::address>;
using CountedSlot = Vex::EntitySlot<int, Counted, &Counted::number>;

inline EntrySlot slot(Vex::U32 key, int number = 0) {
    return EntrySlot(Entry{Nolt::IpAddr(key), number});
}

inline Nolt::IpAddr key(Vex::U32 number) {
    return Nolt::IpAddr(number);
}

inline Vex::U32 below(std::mt19937 & random, Vex::U32 limit) {
    return std::uniform_int_distribution<Vex::U32>(0, limit - 1)(random);
}

template <class Map>
std::vector<Vex::U32> keysOf(Map const & map) {
    std::vector<Vex::U32> keys;
    for (Entry const & entry : map) {
        keys.push_back(entry.key.value());
    }
    return keys;
}

template <class Map>
class MapTest : public testing::Test {};

TYPED_TEST_SUITE_P(MapTest);

TYPED_TEST_P(MapTest, InsertsOverwritesAndLooksUp) {
    TypeParam map;
    map.upsert(slot(1, 10));
    map.upsert(slot(1, 20));
    map.upsert(slot(2, 30));
    EXPECT_EQ(map.size(), 2U);
    EXPECT_EQ(map.find(key(1))->element().number, 20);
    EXPECT_TRUE(map.has(key(2)));
    EXPECT_FALSE(map.has(key(3)));
    EXPECT_EQ(map.find(key(3)), nullptr);
    EXPECT_EQ(map.size(), 2U);
}

TYPED_TEST_P(MapTest, FindOrInsertMakesAnEntryOnlyIfItIsAbsent) {
    TypeParam map;
    int made = 0;
    auto const make = [&] {
        ++made;
        return slot(5, made);
    };
    EXPECT_EQ(map.findOrInsert(key(5), make).element().number, 1);
    EXPECT_EQ(map.findOrInsert(key(5), make).element().number, 1);
    EXPECT_EQ(made, 1);
}

TYPED_TEST_P(MapTest, RemovingAnAbsentKeyChangesNothing) {
    TypeParam map;
    EXPECT_FALSE(map.remove(key(1)));
    map.upsert(slot(1, 10));
    EXPECT_FALSE(map.remove(key(2)));
    EXPECT_EQ(map.size(), 1U);
    EXPECT_EQ(map.remove(key(1))->element().number, 10);
    EXPECT_TRUE(map.empty());
}

TYPED_TEST_P(MapTest, AgreesWithStdMapUnderRandomChanges) {
    std::mt19937 random(2018);
    TypeParam map;
    std::map<Vex::U32, int> expected;
    for (int i = 0; i < 30'000; ++i) {
        Vex::U32 const k = below(random, 500);
        if (random() % 3 == 0) {
            EXPECT_EQ(map.remove(key(k)).has_value(), expected.erase(k) == 1);
        } else {
            map.upsert(slot(k, i));
            expected[k] = i;
        }
        ASSERT_EQ(map.size(), expected.size());
        if (i % 500 == 0) {
            auto keys = keysOf(map);
            std::sort(keys.begin(), keys.end());
            std::vector<Vex::U32> expectedKeys;
            for (auto const & [known, number] : expected) {
                expectedKeys.push_back(known);
                ASSERT_EQ(map.find(key(known))->element().number, number);
            }
            ASSERT_EQ(keys, expectedKeys);
        }
    }
}

TYPED_TEST_P(MapTest, AnIteratorKeepsItsRemovedEntryReadable) {
    TypeParam map;
    map.upsert(slot(1, 10));
    auto it = map.begin();
    map.remove(key(1));
    EXPECT_TRUE(it);
    EXPECT_EQ(it->number, 10);
    EXPECT_EQ(it.key(), key(1));
    ++it;
    EXPECT_FALSE(it);
}

TYPED_TEST_P(MapTest, AWalkThatRemovesEveryEntryReachesEveryEntry) {
    TypeParam map;
    for (Vex::U32 i = 0; i < 300; ++i) {
        map.upsert(slot(i));
    }
    std::vector<Vex::U32> met;
    for (auto it = map.begin(); it; ++it) {
        met.push_back(it.key().value());
        EXPECT_TRUE(map.remove(it));
        EXPECT_FALSE(map.remove(it));
    }
    std::sort(met.begin(), met.end());
    EXPECT_EQ(met.size(), 300U);
    EXPECT_EQ(std::unique(met.begin(), met.end()), met.end());
    EXPECT_TRUE(map.empty());
}

TYPED_TEST_P(MapTest, AWalkDuringChangesReachesEveryLastingEntryOnce) {
    std::mt19937 random(7);
    TypeParam map;
    for (Vex::U32 i = 0; i < 200; ++i) {
        map.upsert(slot(i * 2));
    }
    std::map<Vex::U32, int> met;
    for (auto it = map.begin(); it; ++it) {
        ++met[it.key().value()];
        map.upsert(slot(below(random, 2000) * 2 + 1));
        map.remove(key(below(random, 2000) * 2 + 1));
        if (it.key().value() % 4 == 0) {
            map.remove(it);
        }
    }
    for (Vex::U32 i = 0; i < 200; ++i) {
        EXPECT_EQ(met[i * 2], 1) << i * 2;
    }
    for (auto const & [k, times] : met) {
        EXPECT_EQ(times, 1) << k;
    }
}

TYPED_TEST_P(MapTest, RemovingAtTheEndRemovesNothing) {
    TypeParam map;
    map.upsert(slot(1));
    auto end = map.end();
    EXPECT_FALSE(map.remove(end));
    EXPECT_EQ(map.size(), 1U);
}

TYPED_TEST_P(MapTest, CopiesAreIndependentAndEqualUntilOneChanges) {
    TypeParam map;
    for (Vex::U32 i = 0; i < 50; ++i) {
        map.upsert(slot(i, 1));
    }
    TypeParam copy(map);
    EXPECT_TRUE(copy == map);
    copy.upsert(slot(7, 2));
    EXPECT_FALSE(copy == map);
    copy = map;
    EXPECT_TRUE(copy == map);
    copy.remove(key(3));
    EXPECT_FALSE(copy == map);
    copy.upsert(slot(1000, 1));
    EXPECT_FALSE(copy == map);
    EXPECT_EQ(map.size(), 50U);
    TypeParam const moved(std::move(copy));
    EXPECT_EQ(moved.size(), 50U);
}

TYPED_TEST_P(MapTest, TheVersionChangesWithInsertionsAndRemovals) {
    TypeParam map;
    auto const empty = map.version();
    map.upsert(slot(1, 1));
    auto const one = map.version();
    EXPECT_NE(one, empty);
    map.upsert(slot(1, 2));
    EXPECT_EQ(map.version(), one);
    map.remove(key(1));
    EXPECT_NE(map.version(), one);
}

REGISTER_TYPED_TEST_SUITE_P(
    MapTest, InsertsOverwritesAndLooksUp, FindOrInsertMakesAnEntryOnlyIfItIsAbsent,
    RemovingAnAbsentKeyChangesNothing, AgreesWithStdMapUnderRandomChanges,
    AnIteratorKeepsItsRemovedEntryReadable, AWalkThatRemovesEveryEntryReachesEveryEntry,
    AWalkDuringChangesReachesEveryLastingEntryOnce, RemovingAtTheEndRemovesNothing,
    CopiesAreIndependentAndEqualUntilOneChanges, TheVersionChangesWithInsertionsAndRemovals);

/// An entity is destroyed when the collection and every iterator have released it.
template <class CountedMap>
void testNodeLifetime() {
    CountedMap map;
    for (int i = 0; i < 10; ++i) {
        map.upsert(CountedSlot(Vex::makePtr<Counted>(i)));
    }
    EXPECT_EQ(Counted::alive, 10);
    {
        auto const it = map.begin();
        map.clear();
        EXPECT_EQ(Counted::alive, 1);
        EXPECT_EQ(it->number(), it.key());
    }
    EXPECT_EQ(Counted::alive, 0);
}

} // namespace map_tests
