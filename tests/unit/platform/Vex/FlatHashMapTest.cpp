#include "Vex/FlatHashMap.h"

#include "Nolt/IpAddr.h"
#include "Vex/Slot.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <random>
#include <vector>

namespace {

struct Entry {
    Nolt::IpAddr key;
    int number = 0;

    Nolt::IpAddr const & address() const { return key; }
};

using Table = Vex::FlatHashMap<Vex::ValueSlot<Nolt::IpAddr, Entry, &Entry::address>>;

Table::Slot slot(Vex::U32 address, int number) {
    return Table::Slot(Entry{Nolt::IpAddr(address), number});
}

} // namespace

TEST(FlatHashMap, InsertsAndOverwrites) {
    Table table;
    EXPECT_TRUE(table.upsert(slot(1, 10)));
    EXPECT_FALSE(table.upsert(slot(1, 20)));
    EXPECT_EQ(table.size(), 1U);
    EXPECT_EQ(table.find(Nolt::IpAddr(1))->element().number, 20);
    EXPECT_EQ(table.find(Nolt::IpAddr(2)), nullptr);
}

TEST(FlatHashMap, IsInitiallyEmpty) {
    Table const table;
    EXPECT_TRUE(table.empty());
    EXPECT_TRUE(table.begin() == table.end());
    EXPECT_EQ(table.find(Nolt::IpAddr(1)), nullptr);
}

TEST(FlatHashMap, AgreesWithStdMapAtEverySize) {
    std::mt19937 random(20);
    Table table;
    std::map<Vex::U32, int> expected;
    for (int i = 0; i < 20'000; ++i) {
        auto const key = static_cast<Vex::U32>(random() % 8192);
        EXPECT_EQ(table.upsert(slot(key, i)), expected.count(key) == 0);
        expected[key] = i;
        ASSERT_EQ(table.size(), expected.size());
        if (i < 64 || i % 1000 == 0) {
            for (Vex::U32 probe = 0; probe < 8192; probe += i < 64 ? 1 : 7) {
                auto const * found = table.find(Nolt::IpAddr(probe));
                auto const known = expected.find(probe);
                ASSERT_EQ(found != nullptr, known != expected.end());
                if (found) {
                    ASSERT_EQ(found->element().number, known->second);
                }
            }
        }
    }
}

TEST(FlatHashMap, TheWalkReachesEveryEntryOnceInInsertionOrder) {
    Table table;
    for (Vex::U32 i = 0; i < 100; ++i) {
        table.upsert(slot(1000 - i, static_cast<int>(i)));
    }
    int next = 0;
    for (Entry const & entry : table) {
        EXPECT_EQ(entry.number, next++);
    }
    EXPECT_EQ(next, 100);
}

TEST(FlatHashMap, CanBeRefilledAfterClear) {
    Table table;
    for (Vex::U32 size : {100U, 3U, 40U}) {
        table.clear();
        EXPECT_TRUE(table.empty());
        EXPECT_EQ(table.find(Nolt::IpAddr(0)), nullptr);
        for (Vex::U32 key = 0; key < size; ++key) {
            EXPECT_TRUE(table.upsert(slot(key, 1)));
        }
        for (Vex::U32 key = 0; key < size; ++key) {
            EXPECT_FALSE(table.upsert(slot(key, 2)));
        }
        EXPECT_EQ(table.size(), size);
        EXPECT_EQ(table.find(Nolt::IpAddr(size)), nullptr);
    }
}

TEST(FlatHashMap, FillTakesAllEntriesAtOnceAtEverySize) {
    std::vector<Table::Slot> slots;
    for (Vex::U32 size : {0U, 1U, 16U, 17U, 64U, 65U, 1000U, 3U}) {
        for (Vex::U32 key = 0; key < size; ++key) {
            slots.push_back(slot(key * 7, static_cast<int>(key)));
        }
        Table table;
        table.upsert(slot(3, 3));
        EXPECT_EQ(table.fill(slots), std::nullopt);
        EXPECT_TRUE(slots.empty());
        EXPECT_EQ(table.size(), size);
        int next = 0;
        for (Entry const & entry : table) {
            EXPECT_EQ(entry.number, next++);
        }
        for (Vex::U32 key = 0; key < size; ++key) {
            ASSERT_NE(table.find(Nolt::IpAddr(key * 7)), nullptr);
            EXPECT_EQ(table.find(Nolt::IpAddr(key * 7))->element().number, static_cast<int>(key));
        }
        EXPECT_EQ(table.find(Nolt::IpAddr(3)), nullptr);
        EXPECT_TRUE(table.upsert(slot(3, 3)));
        EXPECT_FALSE(table.upsert(slot(3, 4)));
        EXPECT_EQ(table.size(), size + 1);
    }
}

TEST(FlatHashMap, FillLeavesTheVectorsMemoryForASmallTableAndTakesItForALargeOne) {
    for (Vex::U32 size : {64U, 65U}) {
        std::vector<Table::Slot> slots;
        slots.reserve(1000);
        for (Vex::U32 key = 0; key < size; ++key) {
            slots.push_back(slot(key, 0));
        }
        Table table;
        table.fill(slots);
        EXPECT_EQ(slots.capacity(), size == 64 ? 1000U : 0U);
    }
}

TEST(FlatHashMap, FillReturnsThePositionOfTheFirstRepeatedKey) {
    std::mt19937 random(5);
    for (Vex::U32 size : {2U, 3U, 16U, 17U, 64U, 65U, 1000U}) {
        for (int round = 0; round < 20; ++round) {
            auto const first = static_cast<Vex::U32>(random() % (size - 1));
            auto const again = first + 1 + static_cast<Vex::U32>(random() % (size - 1 - first));
            std::vector<Table::Slot> slots;
            for (Vex::U32 key = 0; key < size; ++key) {
                slots.push_back(slot(key == again ? first : key, 0));
            }
            slots.push_back(slot(first, 0));
            EXPECT_EQ(Table().fill(slots), again);
        }
    }
}
