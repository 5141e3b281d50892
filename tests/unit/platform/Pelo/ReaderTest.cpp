#include "Pelo/Reader.h"

#include "tests/unit/platform/Pelo/TestTables.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>

namespace Pelo::Test {
namespace {

constexpr U32 keyCount = 40;
constexpr U64 generationOffset = generationWord * 8;

// A table with live, dead and empty slots.
PairWriter filled() {
    auto writer = PairWriter::inMemory("t", keyCount);
    for (U32 key = 0; key < keyCount; ++key) {
        writer.insert(key, Pair::of(key));
    }
    for (U32 key = 0; key < keyCount; key += 5) {
        writer.erase(key);
    }
    return writer;
}

bool present(U32 key) {
    return key < keyCount && key % 5 != 0;
}

// Reads the whole table by walking and by looking up keys, and expects only values that
// were written. Raises what the reader raises.
void readAll(PairReader const & reader) {
    U32 met = 0;
    for (auto walk = reader.begin(); walk; ++walk) {
        ASSERT_TRUE(present(walk.key()));
        ASSERT_EQ(walk.value(), Pair::of(walk.key()));
        ++met;
    }
    ASSERT_EQ(met, 32U);
    for (U32 key = 0; key < keyCount; ++key) {
        ASSERT_EQ(reader.value(key), present(key) ? Pair::of(key) : Pair()) << key;
    }
}

void readFromTheStart(PairWriter const & writer) {
    readAll(readerOf(writer));
}

U64 tableSize(PairWriter const & writer) {
    return fileSize(writer.descriptor(), "t");
}

TEST(PeloReader, ReadsATableOfLiveDeadAndEmptySlots) {
    auto const writer = filled();
    EXPECT_NO_THROW(readFromTheStart(writer));
    EXPECT_EQ(readerOf(writer).size(), 32U);
    EXPECT_EQ(readerOf(writer).name(), "t");
}

TEST(PeloReader, OutlivesTheWriterAndItsDescriptor) {
    auto const reader = readerOf(filled());
    EXPECT_NO_THROW(readAll(reader));
}

TEST(PeloReader, EveryChangedByteOfTheHeaderIsDetected) {
    auto const writer = filled();
    auto const opened = readerOf(writer);
    RawMemory const memory(writer.descriptor());
    for (U64 offset = 0; offset < headerSize; ++offset) {
        memory.flip(offset, 0xFF);
        // The upper bytes of the generation count past changes; a table is valid in every
        // generation.
        if (offset > generationOffset && offset < generationOffset + 8) {
            EXPECT_NO_THROW(readFromTheStart(writer)) << offset;
            EXPECT_NO_THROW(readAll(opened)) << offset;
        } else {
            EXPECT_THROW(readerOf(writer), Vex::Error) << offset;
            EXPECT_THROW(opened.begin(), CorruptionDetectedException) << offset;
        }
        memory.flip(offset, 0xFF);
        ASSERT_NO_THROW(readAll(opened)) << offset;
    }
}

TEST(PeloReader, AnotherSeedWithARightChecksumIsDetected) {
    auto const writer = filled();
    auto const opened = readerOf(writer);
    RawMemory const memory(writer.descriptor());
    auto const good = memory.at<FixedHeader>(0);
    auto const slots = (tableSize(writer) - headerSize) / slotSize;
    memory.put(0, makeHeader(formatOf<PairSchema>, slots, seedOf(good) + 1));
    EXPECT_EQ(errorOf<CorruptionDetectedException>([&] { opened.begin(); }),
              "table 't', header: another header, expected the one that it was opened with");
    memory.put(0, makeHeader(formatOf<PairSchema>, slots, 0));
    EXPECT_EQ(errorOf<CorruptionDetectedException>([&] { readerOf(writer); }),
              "table 't', header: a seed of 0, expected a seed that was drawn");
    memory.put(0, good);
    EXPECT_NO_THROW(readAll(opened));
}

TEST(PeloReader, EveryChangedBitOfASlotIsDetected) {
    auto const writer = filled();
    auto const opened = readerOf(writer);
    RawMemory const memory(writer.descriptor());
    for (U64 offset = headerSize; offset < tableSize(writer); ++offset) {
        for (unsigned bit = 0; bit < 9; ++bit) {
            auto const mask = static_cast<U8>(bit < 8 ? 1U << bit : 0xFFU);
            memory.flip(offset, mask);
            auto const slot = std::to_string((offset - headerSize) / slotSize);
            auto const error = errorOf<CorruptionDetectedException>([&] { readAll(opened); });
            ASSERT_TRUE(error.starts_with("table 't', slot " + slot + ": checksum 0x"))
                << offset << ' ' << error;
            memory.flip(offset, mask);
        }
    }
    EXPECT_NO_THROW(readAll(opened));
}

TEST(PeloReader, ALookupIsRightOrRaisesWhateverSlotIsDamaged) {
    auto const writer = filled();
    auto const reader = readerOf(writer);
    RawMemory const memory(writer.descriptor());
    std::size_t raised = 0;
    for (U64 offset = headerSize; offset < tableSize(writer); ++offset) {
        memory.flip(offset, 0xFF);
        for (U32 key = 0; key < keyCount + 10; ++key) {
            try {
                ASSERT_EQ(reader.value(key), present(key) ? Pair::of(key) : Pair()) << offset;
            } catch (CorruptionDetectedException const &) {
                ++raised;
            }
        }
        memory.flip(offset, 0xFF);
    }
    EXPECT_GE(raised, keyCount * slotSize);
}

TEST(PeloReader, ASlotInTheWrongPlaceIsDetected) {
    auto const writer = filled();
    RawMemory const memory(writer.descriptor());
    auto const slots = (tableSize(writer) - headerSize) / slotSize;
    for (U64 slot = 0; slot + 1 < slots; ++slot) {
        auto const place = headerSize + slot * slotSize;
        auto const good = memory.copy(place, slotSize);
        memory.paste(place, memory.copy(place + slotSize, slotSize));
        EXPECT_THROW(readFromTheStart(writer), CorruptionDetectedException) << slot;
        memory.paste(place, good);
    }
}

TEST(PeloReader, ZerosAreNotEmptySlots) {
    auto const writer = filled();
    RawMemory const memory(writer.descriptor());
    for (U64 place = headerSize; place < tableSize(writer); place += slotSize) {
        auto const good = memory.copy(place, slotSize);
        memory.paste(place, std::vector<U8>(slotSize));
        EXPECT_THROW(readFromTheStart(writer), CorruptionDetectedException) << place;
        memory.paste(place, good);
    }
}

TEST(PeloReader, AnOutdatedSlotIsDetectedAtTheEndOfTheWalk) {
    auto writer = filled();
    RawMemory const memory(writer.descriptor());
    auto const slots = memory.copy(headerSize, tableSize(writer) - headerSize);
    writer.erase(1);
    memory.paste(headerSize, slots);
    EXPECT_EQ(errorOf<CorruptionDetectedException>([&] { readFromTheStart(writer); }),
              "table 't', slots: 32 live entries, expected 31");
}

TEST(PeloReader, AnInvalidStateIsDetectedEvenWithARightChecksum) {
    auto const writer = filled();
    Slot<PairSchema> slot;
    slot.stateIs(static_cast<SlotState>(3));
    RawMemory(writer.descriptor()).put(headerSize + 2 * slotSize, slot.sealed(2));
    EXPECT_EQ(errorOf<CorruptionDetectedException>([&] { readFromTheStart(writer); }),
              "table 't', slot 2: state 3, expected 0 (empty), 1 (live) or 2 (dead)");
}

TEST(PeloReader, ASearchInATableWithoutEmptySlotsEnds) {
    auto writer = PairWriter::inMemory("t");
    RawMemory const memory(writer.descriptor());
    for (U64 number = 0; number < 16; ++number) {
        Slot<PairSchema> slot;
        slot.stateIs(SlotState::live);
        slot.keyIs(EncodedKey<PairSchema>(static_cast<U32>(number)));
        memory.put(headerSize + number * slotSize, slot.sealed(number));
    }
    EXPECT_EQ(
        errorOf<CorruptionDetectedException>([&] { static_cast<void>(readerOf(writer).find(99)); }),
        "table 't', slots: none of 16 empty, expected a third of them");
    EXPECT_THROW(writer.insert(99, Pair()), CorruptionDetectedException);
}

TEST(PeloReader, AWalkIsAtTheEndAfterDamage) {
    auto const writer = filled();
    auto const last = tableSize(writer) - 1;
    auto walk = readerOf(writer).begin();
    RawMemory(writer.descriptor()).flip(last, 1);
    EXPECT_THROW(
        while (walk) { ++walk; }, CorruptionDetectedException);
    EXPECT_FALSE(walk);
}

TEST(PeloReader, AnotherKindOfTableIsRefused) {
    auto const writer = filled();
    EXPECT_EQ(
        errorOf<TableError>([&] { Reader<OtherTagSchema>::attach(writer.descriptor(), "t"); }),
        "table 't': holds 'Pelo::Test::Pair', expected 'Pelo::Test::Other'");
    EXPECT_THROW(Reader<LongerValueSchema>::attach(writer.descriptor(), "t"), TableError);
}

TEST(PeloReader, AFileTruncatedAnywhereIsRefused) {
    TemporaryDirectory const directory;
    auto const path = directory.file("table");
    PairWriter::inFile(path).insert(1, Pair::of(1));
    for (auto size = std::filesystem::file_size(path); size-- > 0;) {
        std::filesystem::resize_file(path, size);
        EXPECT_THROW(PairReader::open(path), Vex::Error) << size;
    }
    EXPECT_EQ(errorOf<TableError>([&] { PairReader::open(path); }),
              "table " + Vex::quoted(path) + ": is no table: 0 bytes long, a header alone has 192");
}

TEST(PeloReader, AFileThatIsTooLongIsRefused) {
    TemporaryDirectory const directory;
    auto const path = directory.file("table");
    PairWriter::inFile(path).insert(1, Pair::of(1));
    std::filesystem::resize_file(path, std::filesystem::file_size(path) + 1);
    EXPECT_THROW(PairReader::open(path), CorruptionDetectedException);
}

TEST(PeloReader, AFileTruncatedAfterOpeningIsDetectedBeforeAWalk) {
    TemporaryDirectory const directory;
    auto const path = directory.file("table");
    PairWriter::inFile(path).insert(1, Pair::of(1));
    auto const reader = PairReader::open(path);
    std::filesystem::resize_file(path, 0);
    EXPECT_EQ(errorOf<CorruptionDetectedException>([&] { reader.begin(); }),
              "table " + Vex::quoted(path) + ", file: 0 bytes, expected 704");
}

TEST(PeloReader, OtherFilesAreRefused) {
    TemporaryDirectory const directory;
    EXPECT_THROW(PairReader::open(directory.file("absent")), TableError);
    EXPECT_THROW(PairReader::open(directory.path().string()), TableError);
    auto const path = directory.file("text");
    std::ofstream(path) << std::string(1000, 'x');
    EXPECT_THROW(PairReader::open(path), TableError);
    std::ofstream(path) << std::string(1000, '\0');
    EXPECT_THROW(PairReader::open(path), TableError);
    EXPECT_THROW(PairReader::attach(-1, "t"), TableError);
}

} // namespace
} // namespace Pelo::Test
