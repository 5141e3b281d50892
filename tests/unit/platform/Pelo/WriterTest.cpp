#include "Pelo/Writer.h"

#include "tests/unit/platform/Pelo/TestTables.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace Pelo::Test {
namespace {

using Entries = std::map<U32, Pair>;

// The contents as a reader sees them; reaching a key twice is an error.
Entries contents(PairReader const & reader) {
    Entries entries;
    for (auto walk = reader.begin(); walk; ++walk) {
        EXPECT_TRUE(entries.emplace(walk.key(), walk.value()).second) << walk.key();
    }
    return entries;
}

TEST(PeloWriter, StartsWithAnEmptyTable) {
    auto const writer = PairWriter::inMemory("t");
    EXPECT_EQ(writer.size(), 0U);
    EXPECT_EQ(writer.find(1), std::nullopt);
    EXPECT_EQ(readerOf(writer).size(), 0U);
    EXPECT_TRUE(contents(readerOf(writer)).empty());
}

TEST(PeloWriter, ReturnsWhetherAKeyIsNew) {
    auto writer = PairWriter::inMemory("t");
    EXPECT_TRUE(writer.insert(1, Pair::of(10)));
    EXPECT_FALSE(writer.insert(1, Pair::of(11)));
    EXPECT_EQ(writer.find(1), Pair::of(11));
    EXPECT_TRUE(writer.erase(1));
    EXPECT_FALSE(writer.erase(1));
    EXPECT_FALSE(writer.erase(2));
    EXPECT_TRUE(writer.insert(1, Pair::of(12)));
    EXPECT_EQ(writer.size(), 1U);
}

TEST(PeloWriter, AgreesWithStdMapUnderRandomChanges) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        std::mt19937 random(seed);
        // Few keys cause many overwrites and erasures; many keys make the table move.
        std::uniform_int_distribution<U32> keys(0, seed % 2 ? 40 : 4000);
        std::uniform_int_distribution<int> actions(0, 9);
        auto writer = PairWriter::inMemory("t", seed);
        Entries expected;
        for (U32 step = 0; step < 5000; ++step) {
            U32 const key = keys(random);
            if (actions(random) < 4) {
                ASSERT_EQ(writer.erase(key), expected.erase(key) == 1);
            } else {
                auto const added = expected.insert_or_assign(key, Pair::of(step)).second;
                ASSERT_EQ(writer.insert(key, Pair::of(step)), added);
            }
            ASSERT_EQ(writer.size(), expected.size());
        }
        auto const reader = readerOf(writer);
        EXPECT_EQ(contents(reader), expected);
        for (U32 key = 0; key <= 4000; ++key) {
            auto const entry = expected.find(key);
            auto const value = entry == expected.end() ? Pair() : entry->second;
            ASSERT_EQ(reader.value(key), value) << key;
            ASSERT_EQ(writer.find(key).value_or(Pair()), value) << key;
        }
    }
}

TEST(PeloWriter, AnOpenReaderSeesEveryChange) {
    auto writer = PairWriter::inMemory("t", 10);
    auto const reader = readerOf(writer);
    writer.insert(1, Pair::of(10));
    EXPECT_EQ(contents(reader), (Entries{{1, Pair::of(10)}}));
    writer.insert(1, Pair::of(11));
    writer.insert(2, Pair::of(20));
    EXPECT_EQ(contents(reader), (Entries{{1, Pair::of(11)}, {2, Pair::of(20)}}));
    writer.erase(1);
    EXPECT_EQ(contents(reader), (Entries{{2, Pair::of(20)}}));
    EXPECT_EQ(reader.find(1), std::nullopt);
    EXPECT_EQ(reader.size(), 1U);
}

TEST(PeloWriter, ADefaultValueIsAValueLikeAnyOther) {
    auto writer = PairWriter::inMemory("t");
    writer.insert(1, Pair());
    EXPECT_EQ(contents(readerOf(writer)), (Entries{{1, Pair()}}));
    EXPECT_EQ(readerOf(writer).find(1), Pair());
}

TEST(PeloWriter, DoesNotMoveUntilItHoldsTheEntriesItHasRoomFor) {
    for (U32 const entries : {1U, 10U, 11U, 12U, 100U, 1001U}) {
        auto writer = PairWriter::inMemory("t", entries);
        for (U32 key = 0; key < entries; ++key) {
            writer.insert(key, Pair::of(key));
        }
        EXPECT_EQ(writer.moves(), 0U) << entries;
    }
}

TEST(PeloWriter, AReaderOfTheOldTableKeepsItAndSeesThatItWasReplaced) {
    auto writer = PairWriter::inMemory("t");
    Entries expected;
    auto const reader = readerOf(writer);
    for (U32 key = 0; writer.moves() == 0; ++key) {
        EXPECT_FALSE(reader.replaced());
        writer.insert(key, Pair::of(key));
        expected.emplace(key, Pair::of(key));
    }
    EXPECT_TRUE(reader.replaced());
    EXPECT_FALSE(readerOf(writer).replaced());
    EXPECT_EQ(contents(readerOf(writer)), expected);
    expected.erase(std::prev(expected.end()));
    EXPECT_EQ(contents(reader), expected);
}

TEST(PeloWriter, ErasedKeysKeepTheirPlacesUntilTheTableMoves) {
    auto writer = PairWriter::inMemory("t", 10);
    for (U32 key = 0; key < 10; ++key) {
        writer.insert(key, Pair::of(key));
    }
    auto const order = [&] {
        std::vector<U32> keys;
        for (U32 const key : readerOf(writer)) {
            keys.push_back(key);
        }
        return keys;
    };
    auto const before = order();
    for (U32 key = 0; key < 10; ++key) {
        writer.erase(key);
    }
    EXPECT_TRUE(order().empty());
    for (U32 key = 10; key-- > 0;) {
        writer.insert(key, Pair::of(key));
    }
    EXPECT_EQ(order(), before);
    EXPECT_EQ(writer.moves(), 0U);
}

TEST(PeloWriter, AMoveLeavesDeadSlotsBehind) {
    auto writer = PairWriter::inMemory("t", 10);
    for (U32 key = 0; key < 10'000; ++key) {
        writer.insert(key, Pair::of(key));
        writer.erase(key);
    }
    EXPECT_EQ(fileSize(writer.descriptor(), "t"), headerSize + 16 * slotSize);
    EXPECT_EQ(writer.size(), 0U);
}

// The longest run of used slots.
U64 longestRun(PairWriter const & writer) {
    RawMemory const memory(writer.descriptor());
    U64 longest = 0;
    U64 run = 0;
    auto const slots = (fileSize(writer.descriptor(), "t") - headerSize) / slotSize;
    for (U64 number = 0; number < slots; ++number) {
        Slot<PairSchema> slot;
        slot.words() = memory.at<Slot<PairSchema>::Words>(Slot<PairSchema>::place(number) * 8);
        run = slot.state() == SlotState::empty ? 0 : run + 1;
        longest = std::max(longest, run);
    }
    return longest;
}

TEST(PeloWriter, ATableFilledInTheOrderOfABiggerOneHasNoLongRuns) {
    auto source = PairWriter::inMemory("t", 100'000);
    for (U32 key = 0; key < 100'000; ++key) {
        source.insert(key, Pair());
    }
    auto target = PairWriter::inMemory("t");
    U64 longest = 0;
    for (U32 const key : readerOf(source)) {
        if (target.size() == 6000) {
            longest = longestRun(target);
            break;
        }
        target.insert(key, Pair());
    }
    EXPECT_GT(longest, 1U);
    EXPECT_LT(longest, 1000U);
}

U64 seedIn(PairWriter const & writer) {
    return seedOf(RawMemory(writer.descriptor()).at<FixedHeader>(0));
}

TEST(PeloWriter, EachTableHasItsOwnSeedAndAMoveDrawsAnother) {
    auto writer = PairWriter::inMemory("t");
    auto const first = seedIn(writer);
    EXPECT_NE(first, seedIn(PairWriter::inMemory("t")));
    for (U32 key = 0; writer.moves() == 0; ++key) {
        writer.insert(key, Pair::of(key));
    }
    EXPECT_NE(seedIn(writer), first);
}

TEST(PeloWriter, TablesWithTheSameKeysHaveThemInDifferentOrders) {
    auto const order = [] {
        auto writer = PairWriter::inMemory("t", 1000);
        for (U32 key = 0; key < 1000; ++key) {
            writer.insert(key, Pair::of(key));
        }
        std::vector<U32> keys;
        for (U32 const key : readerOf(writer)) {
            keys.push_back(key);
        }
        return keys;
    };
    EXPECT_NE(order(), order());
}

// How many slots a search for each key of the table looks at, all together.
U64 searchSteps(PairWriter const & writer) {
    RawMemory const memory(writer.descriptor());
    auto const slots = (fileSize(writer.descriptor(), "t") - headerSize) / slotSize;
    KeyPlaces<PairSchema> const places(seedIn(writer), slots);
    U64 steps = 0;
    for (U64 number = 0; number < slots; ++number) {
        Slot<PairSchema> slot;
        slot.words() = memory.at<Slot<PairSchema>::Words>(Slot<PairSchema>::place(number) * 8);
        if (slot.state() != SlotState::empty) {
            auto const first = EncodedKey<PairSchema>(slot.key()).firstSlot(places);
            steps += (number + slots - first) % slots + 1;
        }
    }
    return steps;
}

// The first slot of a key in a table whose order is known to everyone.
U64 slotWithoutSeed(U32 key, U64 capacity) {
    U64 word = 0;
    PairSchema::encodeKey(key, reinterpret_cast<U8 *>(&word));
    return (checksum(capacity, std::span(&word, 1)) >> 32) * capacity >> 32;
}

TEST(PeloWriter, KeysChosenToShareAFewSlotsCostNoMoreThanOthers) {
    constexpr U32 count = 2000;
    auto chosen = PairWriter::inMemory("t", count);
    auto const capacity = (fileSize(chosen.descriptor(), "t") - headerSize) / slotSize;
    U32 sharing = 0;
    for (U32 key = 0; sharing < count; ++key) {
        if (slotWithoutSeed(key, capacity) < 3) {
            chosen.insert(key, Pair());
            ++sharing;
        }
    }
    auto others = PairWriter::inMemory("t", count);
    for (U32 key = 0; key < count; ++key) {
        others.insert(key, Pair());
    }
    ASSERT_EQ(chosen.moves() + others.moves(), 0U);
    // Two slots each at this load. In three shared slots it would be a thousand.
    EXPECT_LT(searchSteps(chosen), 4 * count);
    EXPECT_LT(searchSteps(others), 4 * count);
    EXPECT_LT(longestRun(chosen), 200U);
}

TEST(PeloWriter, APathLeadsToTheNewTableAfterAMove) {
    TemporaryDirectory const directory;
    auto const path = directory.file("table");
    auto writer = PairWriter::inFile(path);
    auto const first = PairReader::open(path);
    Entries expected;
    for (U32 key = 0; key < 1000; ++key) {
        writer.insert(key, Pair::of(key));
        expected.emplace(key, Pair::of(key));
    }
    EXPECT_GT(writer.moves(), 0U);
    EXPECT_TRUE(first.replaced());
    EXPECT_EQ(contents(PairReader::open(path)), expected);
    EXPECT_EQ(PairReader::open(path).name(), path);
}

TEST(PeloWriter, AFileOutlivesItsWriterAndTheNextWriterReplacesIt) {
    TemporaryDirectory const directory;
    auto const path = directory.file("table");
    PairWriter::inFile(path).insert(1, Pair::of(1));
    auto const old = PairReader::open(path);
    PairWriter::inFile(path).insert(2, Pair::of(2));
    EXPECT_EQ(contents(old), (Entries{{1, Pair::of(1)}}));
    EXPECT_EQ(contents(PairReader::open(path)), (Entries{{2, Pair::of(2)}}));
}

TEST(PeloWriter, RefusesMoreEntriesThanATableCanHold) {
    EXPECT_EQ(errorOf<TableError>([] { PairWriter::inMemory("t", maxCapacity); }),
              "table 't': cannot hold 4294967296 entries, at most 2147483647");
    EXPECT_THROW(PairWriter::inMemory("t", ~U64{0}), TableError);
}

TEST(PeloWriter, DetectsDamageInTheSlotsItReads) {
    auto writer = PairWriter::inMemory("t");
    for (U64 slot = 0; slot < 16; ++slot) {
        RawMemory(writer.descriptor()).flip(headerSize + slot * slotSize + 10, 1);
    }
    EXPECT_THROW(writer.insert(1, Pair::of(1)), CorruptionDetectedException);
    EXPECT_THROW(writer.erase(1), CorruptionDetectedException);
    EXPECT_THROW(static_cast<void>(writer.find(1)), CorruptionDetectedException);
}

} // namespace
} // namespace Pelo::Test
