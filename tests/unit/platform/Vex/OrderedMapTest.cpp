#include "Vex/OrderedMap.h"

#include "Vex/String.h"
#include "tests/unit/platform/Vex/MapTests.h"

#include <array>
#include <memory>
#include <stdexcept>
#include <thread>

namespace map_tests {

using Entries = Vex::OrderedMap<EntrySlot>;
using CountedMap = Vex::OrderedMap<CountedSlot>;

INSTANTIATE_TYPED_TEST_SUITE_P(OrderedMap, MapTest, Entries);

namespace {

/// Sizes around each change of layout: empty, one growing block, full blocks, many blocks.
constexpr std::array<Vex::U32, 16> sizes{0,  1,  2,  3,  4,   5,   8,    9,
                                         16, 63, 64, 65, 128, 129, 1000, 40'000};

Entries ascending(Vex::U32 size, Vex::U32 stride = 1) {
    Entries map;
    for (Vex::U32 i = 0; i < size; ++i) {
        map.upsert(slot(i * stride, static_cast<int>(i)));
    }
    return map;
}

std::vector<Vex::U32> shuffled(Vex::U32 size) {
    std::vector<Vex::U32> keys(size);
    for (Vex::U32 i = 0; i < size; ++i) {
        keys[i] = i;
    }
    std::shuffle(keys.begin(), keys.end(), std::mt19937(2018));
    return keys;
}

} // namespace

TEST(OrderedMap, WalksInAscendingKeyOrderWhateverTheInsertionOrder) {
    for (Vex::U32 const size : sizes) {
        auto const scattered = shuffled(size);
        for (int order = 0; order < 3; ++order) {
            Entries map;
            for (Vex::U32 i = 0; i < size; ++i) {
                map.upsert(slot(order == 0 ? i : order == 1 ? size - 1 - i : scattered[i]));
            }
            Vex::U32 next = 0;
            for (Entry const & entry : map) {
                ASSERT_EQ(entry.key.value(), next++);
            }
            EXPECT_EQ(next, size);
            EXPECT_EQ(map.size(), size);
            EXPECT_FALSE(map.has(key(size)));
        }
    }
}

TEST(OrderedMap, BecomesEmptyInWhateverOrderEntriesAreRemoved) {
    for (Vex::U32 const size : sizes) {
        auto const scattered = shuffled(size);
        for (int order = 0; order < 3; ++order) {
            Entries map = ascending(size);
            for (Vex::U32 i = 0; i < size; ++i) {
                auto const k = order == 0 ? i : order == 1 ? size - 1 - i : scattered[i];
                ASSERT_EQ(map.remove(key(k))->element().number, static_cast<int>(k));
                ASSERT_FALSE(map.has(key(k)));
                ASSERT_EQ(map.size(), size - 1 - i);
            }
            EXPECT_TRUE(map.empty());
            EXPECT_FALSE(map.begin());
            map.upsert(slot(5));
            EXPECT_EQ(keysOf(map), std::vector<Vex::U32>{5});
        }
    }
}

TEST(OrderedMap, AnEmptyCollectionIsTwoWords) {
    EXPECT_EQ(sizeof(Entries), 2 * sizeof(void *));
}

TEST(OrderedMap, EntriesLiveUntilTheCollectionAndAllIteratorsReleaseThem) {
    testNodeLifetime<CountedMap>();
}

TEST(OrderedMap, ClearLeavesOnlyTheEntriesOfIterators) {
    for (int const size : {1, 10, 1000}) {
        CountedMap map;
        for (int i = 0; i < size; ++i) {
            map.upsert(CountedSlot(Vex::makePtr<Counted>(i)));
        }
        {
            auto const first = map.begin();
            auto middle = first;
            for (int i = 0; i < size / 2; ++i) {
                ++middle;
            }
            auto const again = middle;
            map.clear();
            EXPECT_EQ(Counted::alive, size == 1 ? 1 : 2);
            EXPECT_EQ(first->number(), 0);
            EXPECT_EQ(middle->number(), size / 2);
            EXPECT_TRUE(middle == again);
            middle = first;
            EXPECT_EQ(Counted::alive, size == 1 ? 1 : 2);
            EXPECT_EQ(again->number(), size / 2);
        }
        EXPECT_EQ(Counted::alive, 0);
    }
}

TEST(OrderedMap, ARemovedEntryIsDestroyedWhenTheLastIteratorLeavesIt) {
    CountedMap map;
    for (int i = 0; i < 10; ++i) {
        map.upsert(CountedSlot(Vex::makePtr<Counted>(i)));
    }
    auto one = map.begin();
    auto other = one;
    map.remove(one);
    map.remove(5);
    EXPECT_EQ(Counted::alive, 9);
    ++one;
    EXPECT_EQ(Counted::alive, 9);
    EXPECT_EQ(one.key(), 1);
    EXPECT_EQ(other.key(), 0);
    ++other;
    EXPECT_EQ(Counted::alive, 8);
    EXPECT_TRUE(one == other);
    map.clear();
    EXPECT_EQ(Counted::alive, 1);
    one = map.end();
    EXPECT_EQ(Counted::alive, 1);
    other = one;
    EXPECT_EQ(Counted::alive, 0);
}

TEST(OrderedMap, AnIteratorOutlivesItsCollection) {
    for (Vex::U32 const size : {1U, 10U, 1000U}) {
        Entries::Iterator kept;
        Entries::Iterator copy;
        {
            Entries const map = ascending(size);
            kept = map.begin();
            for (Vex::U32 i = 0; i + 1 < size; ++i) {
                ++kept;
            }
        }
        copy = kept;
        kept = Entries::Iterator();
        EXPECT_EQ(copy->number, static_cast<int>(size - 1));
        EXPECT_EQ(copy.key(), key(size - 1));
    }
}

TEST(OrderedMap, AnEntryStaysInPlaceWhileAnIteratorRefersToIt) {
    for (Vex::U32 const size : {1U, 2U, 5U, 64U, 1000U}) {
        Entries map = ascending(size, 10);
        auto it = map.begin();
        for (Vex::U32 i = 0; i < size / 2; ++i) {
            ++it;
        }
        Entry const * const address = &*it;
        Vex::U32 const known = it.key().value();
        for (Vex::U32 i : shuffled(size * 10)) {
            map.upsert(slot(i, 7));
            ASSERT_EQ(&*it, address);
            ASSERT_EQ(it.key().value(), known);
        }
        for (Vex::U32 i : shuffled(size * 10)) {
            map.remove(key(i));
            ASSERT_EQ(&*it, address);
            ASSERT_EQ(it.key().value(), known);
        }
        EXPECT_TRUE(map.empty());
        EXPECT_EQ(it->number, 7);
    }
}

TEST(OrderedMap, AnOverwriteIsSeenThroughAnIteratorEvenAfterInsertionsAndRemovals) {
    for (Vex::U32 const size : {1U, 10U, 1000U}) {
        Entries map = ascending(size, 10);
        auto const it = map.begin();
        map.upsert(slot(0, 100));
        EXPECT_EQ(it->number, 100);
        map.upsert(slot(1, 0));
        map.upsert(slot(0, 200));
        EXPECT_EQ(it->number, 200);
        map.remove(key(1));
        map.remove(key(10));
        map.find(key(0))->element().number = 300;
        EXPECT_EQ(it->number, 300);
    }
}

TEST(OrderedMap, AReinsertedEntryIsNotTheRemovedOne) {
    Entries map = ascending(3);
    auto removed = map.begin();
    map.remove(key(0));
    map.upsert(slot(0, 50));
    EXPECT_EQ(removed->number, 0);
    EXPECT_FALSE(map.remove(removed));
    EXPECT_FALSE(removed == map.begin());
    EXPECT_EQ(map.begin()->number, 50);
    ++removed;
    EXPECT_EQ(removed.key(), key(1));
}

TEST(OrderedMap, IteratorsAreEqualOnlyOnTheSameEntry) {
    for (Vex::U32 const size : {2U, 1000U}) {
        Entries map = ascending(size, 10);
        auto const before = map.begin();
        map.upsert(slot(5));
        EXPECT_TRUE(before == map.begin());
        EXPECT_FALSE(++map.begin() == before);
        EXPECT_TRUE(map.end() == map.end());
        EXPECT_FALSE(before == map.end());
        Entries const copy(map);
        EXPECT_FALSE(copy.begin() == map.begin());
        auto moving = map.begin();
        auto const previous = moving++;
        EXPECT_TRUE(previous == before);
        EXPECT_EQ(moving.key(), key(5));
    }
}

TEST(OrderedMap, AWalkReachesEntriesInsertedAfterTheIterator) {
    for (Vex::U32 const size : {1U, 10U, 64U, 1000U}) {
        Entries map = ascending(size, 10);
        std::vector<Vex::U32> met;
        for (auto it = map.begin(); it; ++it) {
            Vex::U32 const k = it.key().value();
            met.push_back(k);
            if (k % 10 == 0) {
                map.upsert(slot(k + 5));
                map.upsert(slot(k > 0 ? k - 1 : 0));
            }
        }
        std::vector<Vex::U32> expected;
        for (Vex::U32 i = 0; i < size; ++i) {
            expected.insert(expected.end(), {i * 10, i * 10 + 5});
        }
        EXPECT_EQ(met, expected);
    }
}

TEST(OrderedMap, AnIteratorKeepsItsEntryThroughSwapAndMove) {
    Entries one = ascending(10);
    Entries other = ascending(5, 100);
    auto it = one.begin();
    one.swap(other);
    EXPECT_EQ(one.size(), 5U);
    EXPECT_EQ(other.size(), 10U);
    EXPECT_FALSE(one.remove(it));
    Entries moved(std::move(other));
    EXPECT_EQ(moved.remove(it)->element().number, 0);
    EXPECT_EQ(it.key(), key(0));
    ++it;
    EXPECT_EQ(it.key(), key(100));
}

TEST(OrderedMap, CopiesAndComparesEverySize) {
    for (Vex::U32 const size : sizes) {
        Entries const map = ascending(size);
        Entries copy(map);
        EXPECT_TRUE(copy == map);
        EXPECT_EQ(keysOf(copy), keysOf(map));
        copy.upsert(slot(size / 2, -1));
        EXPECT_FALSE(copy == map);
    }
}

namespace {

/// An element that can only be moved.
struct Moved {
    explicit Moved(int n) : number(std::make_unique<int>(n)) {}

    int key() const { return *number / 2; }

    std::unique_ptr<int> number;
};

/// An element that can only be copied.
struct Copied {
    explicit Copied(Vex::String t) : text(std::move(t)) {}

    Copied(Copied const & other) : text(other.text) {}

    Copied & operator=(Copied const & other) {
        Copied copy(other);
        std::swap(text, copy.text);
        return *this;
    }

    Vex::String const & key() const { return text; }

    Vex::String text;
};

} // namespace

TEST(OrderedMap, HoldsSlotsThatCanOnlyBeMoved) {
    Vex::OrderedMap<Vex::ValueSlot<int, Moved, &Moved::key>> map;
    using MovedSlot = decltype(map)::Slot;
    map.upsert(MovedSlot(Moved(1000)));
    auto const it = map.begin();
    for (int i = 0; i < 1000; ++i) {
        map.upsert(MovedSlot(Moved(i * 2 + 1)));
    }
    EXPECT_EQ(map.size(), 1000U);
    EXPECT_EQ(*it->number, 1001);
    int next = 0;
    for (Moved const & moved : map) {
        EXPECT_EQ(moved.key(), next++);
    }
}

TEST(OrderedMap, HoldsSlotsThatCanOnlyBeCopied) {
    Vex::OrderedMap<Vex::ValueSlot<Vex::String, Copied, &Copied::key>> map;
    for (int i = 0; i < 300; ++i) {
        map.upsert(decltype(map)::Slot(Copied(Vex::String(std::to_string(i)))));
    }
    auto const it = map.begin();
    EXPECT_EQ(map.remove(Vex::String("0"))->element().text, "0");
    EXPECT_EQ(it.key(), "0");
    EXPECT_EQ(map.remove(Vex::String("299"))->element().text, "299");
    EXPECT_EQ(map.size(), 298U);
}

namespace {

/// A key whose comparison throws on request.
struct Thrower {
    int number = 0;
    inline static int comparisonsLeft = -1;

    bool operator==(Thrower const & other) const { return (*this <=> other) == 0; }

    std::strong_ordering operator<=>(Thrower const & other) const {
        if (comparisonsLeft >= 0 && comparisonsLeft-- == 0) {
            throw std::runtime_error("cannot be compared");
        }
        return number <=> other.number;
    }
};

} // namespace

TEST(OrderedMap, AComparisonThatThrowsLeavesTheCollectionUnchanged) {
    using ThrowerSlot = Vex::SetSlot<Thrower>;
    for (int const size : {3, 1000}) {
        for (int const comparisons : {0, 1, 2, 5}) {
            Vex::OrderedMap<ThrowerSlot> map;
            for (int i = 0; i < size; ++i) {
                map.upsert(ThrowerSlot(Thrower{i * 2}, true));
            }
            auto const before = map;
            auto it = ++map.begin();
            auto const throws = [&](auto && act) {
                Thrower::comparisonsLeft = comparisons;
                bool thrown = false;
                try {
                    act();
                } catch (std::runtime_error const &) {
                    thrown = true;
                }
                // A run that needed fewer comparisons has changed the state that the next run
                // tests.
                bool const enough = Thrower::comparisonsLeft < 0;
                Thrower::comparisonsLeft = -1;
                EXPECT_EQ(thrown, enough);
                if (!thrown) {
                    map = before;
                    it = ++map.begin();
                }
                EXPECT_TRUE(map == before);
                EXPECT_EQ(it.key().number, 2);
            };
            throws([&] { map.upsert(ThrowerSlot(Thrower{3}, true)); });
            throws([&] { map.remove(Thrower{2}); });
            throws([&] { map.remove(it); });
            map.upsert(ThrowerSlot(Thrower{2}, true));
            throws([&] { static_cast<void>(map.find(Thrower{2})); });
        }
    }
}

TEST(OrderedMap, AMakeThatThrowsLeavesTheCollectionUnchanged) {
    for (Vex::U32 const size : {0U, 3U, 1000U}) {
        Entries map = ascending(size, 10);
        auto const before = map;
        auto const it = map.begin();
        auto const version = map.version();
        EXPECT_THROW(
            map.findOrInsert(key(5), []() -> EntrySlot { throw std::runtime_error("not made"); }),
            std::runtime_error);
        EXPECT_TRUE(map == before);
        EXPECT_EQ(map.version(), version);
        EXPECT_TRUE(it == map.begin());
    }
}

TEST(OrderedMap, RemoveReturnsTheEntry) {
    CountedMap map;
    for (int i = 0; i < 200; ++i) {
        map.upsert(CountedSlot(Vex::makePtr<Counted>(i)));
    }
    auto const taken = map.remove(50);
    EXPECT_EQ(taken->key(), 50);
    EXPECT_FALSE(map.has(50));
    EXPECT_EQ(Counted::alive, 200);
}

TEST(OrderedMap, WalksOnSeveralThreadsAndIteratorsPassedToAThread) {
    Vex::threadSafePtrIs(true);
    {
        CountedMap map;
        for (int i = 0; i < 300; ++i) {
            map.upsert(CountedSlot(Vex::makePtr<Counted>(i)));
        }
        auto const walk = [&map] {
            for (int round = 0; round < 200; ++round) {
                int next = 0;
                for (auto it = map.begin(); it; ++it) {
                    auto ahead = it;
                    ASSERT_EQ(it->number(), next++);
                    ASSERT_EQ(static_cast<bool>(++ahead), next < 300);
                }
                ASSERT_EQ(next, 300);
            }
        };
        std::thread one(walk);
        std::thread other(walk);
        one.join();
        other.join();

        std::vector<CountedMap::Iterator> iterators;
        for (auto it = map.begin(); it; ++it) {
            iterators.push_back(it);
        }
        std::thread reader([iterators = std::move(iterators)]() mutable {
            while (!iterators.empty()) {
                EXPECT_EQ(iterators.back()->number() + 1, static_cast<int>(iterators.size()));
                iterators.pop_back();
            }
        });
        for (int i = 0; i < 300; i += 2) {
            map.remove(i);
            map.upsert(CountedSlot(Vex::makePtr<Counted>(1000 + i)));
        }
        map.clear();
        reader.join();
        EXPECT_EQ(Counted::alive, 0);
    }
    Vex::threadSafePtrIs(false);
}

} // namespace map_tests
