#include "Pelo/Region.h"

#include "Pelo/Errors.h"
#include "tests/unit/platform/Pelo/TestTables.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

/// A reader and a writer in separate processes.
namespace Pelo::Test {
namespace {

constexpr U64 generationAt = generationWord * 8;

// Runs `work` in a separate process until this object is destroyed.
class Process {
public:
    template <class Work>
    explicit Process(Work && work) : pid_(::fork()) {
        if (pid_ == 0) {
            work();
            ::_exit(0);
        }
    }

    Process(Process const &) = delete;
    Process & operator=(Process const &) = delete;

    ~Process() { kill(); }

    void kill() {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            EXPECT_EQ(::waitpid(pid_, nullptr, 0), pid_);
            pid_ = -1;
        }
    }

    bool started() const { return pid_ > 0; }

private:
    pid_t pid_;
};

constexpr U32 stableKeys = 500;
constexpr U32 fleetingKeys = 500;

PairWriter filledRegion() {
    auto writer = PairWriter::inMemory("t", stableKeys + fleetingKeys);
    for (U32 key = 0; key < stableKeys; ++key) {
        writer.insert(key, Pair::of(0));
    }
    return writer;
}

// Overwrites the stable keys, and inserts and erases the fleeting ones.
[[noreturn]] void changeForEver(PairWriter & writer) {
    for (U64 round = 1;; ++round) {
        for (U32 key = 0; key < stableKeys; ++key) {
            writer.insert(key, Pair::of(round * stableKeys + key));
            U32 const fleeting = stableKeys + static_cast<U32>((round * 7 + key) % fleetingKeys);
            if (round % 2 == 0) {
                writer.insert(fleeting, Pair::of(round));
            } else {
                writer.erase(fleeting);
            }
        }
    }
}

TEST(Region, AReaderOfABusyWriterSeesWholeValuesAndEveryKeyThatStays) {
    auto writer = filledRegion();
    auto const reader = readerOf(writer);
    auto const region = Region::attach(writer.descriptor(), "t", formatOf<PairSchema>);
    Process const process([&] { changeForEver(writer); });
    ASSERT_TRUE(process.started());

    U32 walksWithChanges = 0;
    for (U32 walks = 0; walksWithChanges < 50; ++walks) {
        ASSERT_LT(walks, 100'000U) << "the writer does nothing";
        U64 const before = region->generation();
        std::vector<U32> met(stableKeys + fleetingKeys);
        for (auto walk = reader.begin(); walk; ++walk) {
            ASSERT_LT(walk.key(), met.size());
            ++met[walk.key()];
            ASSERT_TRUE(walk.value().whole()) << walk.key();
        }
        walksWithChanges += region->generation() != before ? 1 : 0;
        for (U32 key = 0; key < met.size(); ++key) {
            ASSERT_LE(met[key], 1U) << key;
            ASSERT_TRUE(met[key] == 1 || key >= stableKeys) << key;
            auto const value = reader.find(key);
            ASSERT_TRUE(value || key >= stableKeys) << key;
            ASSERT_TRUE(!value || value->whole()) << key;
        }
        ASSERT_GE(reader.size(), stableKeys);
        ASSERT_LE(reader.size(), stableKeys + fleetingKeys);
    }
}

TEST(Region, TablesOpenedWhileTheWriterMovesThemAreComplete) {
    TemporaryDirectory const directory;
    auto const path = directory.file("table");
    auto writer = PairWriter::inFile(path);
    Process const process([&] {
        for (U32 key = 0;; ++key) {
            writer.insert(key, Pair::of(key));
            if (key == 20'000) {
                writer = PairWriter::inFile(path);
                key = 0;
            }
        }
    });
    ASSERT_TRUE(process.started());
    U32 replaced = 0;
    for (U32 opened = 0; replaced < 20; ++opened) {
        ASSERT_LT(opened, 100'000U) << "the writer never moves";
        auto const reader = PairReader::open(path);
        auto const atLeast = reader.size();
        U64 met = 0;
        for (auto walk = reader.begin(); walk; ++walk) {
            ASSERT_EQ(walk.value(), Pair::of(walk.key()));
            ++met;
        }
        ASSERT_GE(met, atLeast);
        replaced += reader.replaced() ? 1 : 0;
    }
}

TEST(Region, AReaderWaitsForAChangeThatEnds) {
    auto writer = filledRegion();
    RawMemory const memory(writer.descriptor());
    auto const reader = readerOf(writer);
    auto const generation = memory.at<U64>(generationAt);
    memory.put(generationAt, generation + 1);
    std::thread ending([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        memory.put(generationAt, generation + 2);
    });
    EXPECT_EQ(reader.value(3), Pair::of(0));
    EXPECT_EQ(memory.at<U64>(generationAt), generation + 2);
    ending.join();
}

TEST(Region, AChangeThatDoesNotEndIsCorruption) {
    auto const writer = filledRegion();
    auto const reader = readerOf(writer);
    auto walk = reader.begin();
    RawMemory(writer.descriptor()).put(generationAt, U64{12345});
    auto const expected = "table 't', header: a change under way, generation 12345, expected an "
                          "even generation, the end of the change";
    using Corruption = CorruptionDetectedException;
    EXPECT_EQ(errorOf<Corruption>([&] { ++walk; }), expected);
    EXPECT_FALSE(walk);
    EXPECT_EQ(errorOf<Corruption>([&] { static_cast<void>(reader.find(3)); }), expected);
    EXPECT_EQ(errorOf<Corruption>([&] { readerOf(writer); }), expected);
}

TEST(Region, AHeaderDamagedByAChangeIsDetectedAtTheNextRead) {
    auto writer = filledRegion();
    auto const reader = readerOf(writer);
    auto walk = reader.begin();
    RawMemory(writer.descriptor()).flip(16, 1);
    EXPECT_NO_THROW(++walk);
    writer.insert(1, Pair::of(1));
    EXPECT_EQ(errorOf<CorruptionDetectedException>([&] { ++walk; }),
              "table 't', header: another header, expected the one that it was opened with");
}

TEST(Region, AWriterKilledAtAnyMomentLeavesATableThatIsCompleteOrRefused) {
    U32 refused = 0;
    U32 whole = 0;
    for (U32 attempt = 0; refused == 0 || whole == 0; ++attempt) {
        ASSERT_LT(attempt, 500U) << refused << ' ' << whole;
        auto writer = filledRegion();
        auto const reader = readerOf(writer);
        auto const region = Region::attach(writer.descriptor(), "t", formatOf<PairSchema>);
        auto const before = region->generation();
        Process process([&] { changeForEver(writer); });
        ASSERT_TRUE(process.started());
        while (region->generation() < before + 1000 + 37 * attempt) {
            std::this_thread::yield();
        }
        process.kill();
        bool const inTheMiddle = region->generation() % 2 != 0;
        try {
            for (auto walk = reader.begin(); walk; ++walk) {
                ASSERT_TRUE(walk.value().whole());
            }
            ASSERT_FALSE(inTheMiddle);
            ++whole;
        } catch (CorruptionDetectedException const &) {
            ASSERT_TRUE(inTheMiddle);
            ++refused;
        }
    }
}

TEST(Region, ACopyIsNotReachedByLaterChanges) {
    auto writer = filledRegion();
    auto const copy = PairReader::copyOf(writer.descriptor(), "copy");
    writer.insert(0, Pair::of(1));
    writer.erase(1);
    EXPECT_EQ(copy.name(), "copy");
    EXPECT_EQ(copy.size(), stableKeys);
    EXPECT_EQ(copy.find(0), Pair::of(0));
    EXPECT_EQ(copy.find(1), Pair::of(0));
    EXPECT_EQ(readerOf(writer).find(0), Pair::of(1));
}

TEST(Region, ACopySurvivesACutOfItsFileDuringAWalk) {
    TemporaryDirectory const directory;
    auto writer = PairWriter::inFile(directory.file("t"), stableKeys);
    for (U32 key = 0; key < stableKeys; ++key) {
        writer.insert(key, Pair::of(key));
    }
    auto const copy = PairReader::copyOf(writer.descriptor(), "t");
    U32 met = 0;
    for (auto at = copy.begin(); at; ++at) {
        EXPECT_EQ(at.value(), Pair::of(at.key()));
        if (++met == 10) {
            std::filesystem::resize_file(directory.file("t"), 0);
        }
    }
    EXPECT_EQ(met, stableKeys);
    EXPECT_EQ(copy.size(), stableKeys);
}

TEST(Region, AFileThatIsCutIsNotCopied) {
    TemporaryDirectory const directory;
    auto const writer = PairWriter::inFile(directory.file("t"));
    auto const size = fileSize(writer.descriptor(), "t");
    std::filesystem::resize_file(directory.file("t"), size - 8);
    EXPECT_EQ(
        errorOf<CorruptionDetectedException>([&] { PairReader::copyOf(writer.descriptor(), "t"); }),
        "table 't', header: " + std::to_string(size - 8) + " bytes for 16 slots, expected " +
            std::to_string(size));
    std::filesystem::resize_file(directory.file("t"), 8);
    EXPECT_EQ(errorOf<TableError>([&] { PairReader::copyOf(writer.descriptor(), "t"); }),
              "table 't': is no table: 8 bytes long, a header alone has 192");
}

// The header promises a table that is far larger than the file on the disk.
TEST(Region, AFileWithAHoleIsNotCopied) {
    TemporaryDirectory const directory;
    constexpr U64 capacity = U64{1} << 31;
    auto const header = makeHeader(formatOf<PairSchema>, capacity);
    Descriptor const file(::open(directory.file("t").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    RawMemory(file.number()).put(0, header);
    auto const size = static_cast<off_t>(regionSize(formatOf<PairSchema>, capacity));
    ASSERT_EQ(::ftruncate(file.number(), size), 0);
    EXPECT_EQ(errorOf<CorruptionDetectedException>([&] { PairReader::copyOf(file.number(), "t"); }),
              "table 't', file: a hole, expected all slots");
}

TEST(Region, ACopyWaitsForTheEndOfAChange) {
    auto const writer = filledRegion();
    RawMemory const memory(writer.descriptor());
    auto const before = memory.at<U64>(generationAt);
    memory.put(generationAt, before + 1);
    std::jthread const end([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        memory.put(generationAt, before + 2);
    });
    EXPECT_EQ(PairReader::copyOf(writer.descriptor(), "t").size(), stableKeys);
}

TEST(Region, ATableWhoseWriterDiedInAChangeIsNotCopied) {
    auto const writer = filledRegion();
    RawMemory(writer.descriptor()).put(generationAt, U64{7});
    EXPECT_EQ(
        errorOf<CorruptionDetectedException>([&] { PairReader::copyOf(writer.descriptor(), "t"); }),
        "table 't', header: a change under way, generation 7, expected an even generation, "
        "the end of the change");
}

// How many bytes this process has read, from anywhere.
U64 bytesRead() {
    std::ifstream counters("/proc/self/io");
    std::string name;
    U64 count = 0;
    counters >> name >> count;
    EXPECT_EQ(name, "rchar:");
    return count;
}

TEST(Region, ATableInAChangeIsNotCopiedBeforeTheChangeEnds) {
    auto const writer = PairWriter::inMemory("t", 1'000'000);

    struct stat file {};

    ASSERT_EQ(::fstat(writer.descriptor(), &file), 0);
    RawMemory(writer.descriptor()).put(generationAt, U64{7});
    U64 const before = bytesRead();
    EXPECT_THROW(static_cast<void>(PairReader::copyOf(writer.descriptor(), "t")),
                 CorruptionDetectedException);
    EXPECT_LT(bytesRead() - before, static_cast<U64>(file.st_size));
}

} // namespace
} // namespace Pelo::Test
