#include "Pelo/Mapping.h"

#include "Pelo/Errors.h"
#include "tests/unit/platform/Pelo/TestTables.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace Pelo {
namespace {

using Test::errorOf;
using Test::RawMemory;
using Test::TemporaryDirectory;

std::size_t filesIn(TemporaryDirectory const & directory) {
    auto const files = std::filesystem::directory_iterator(directory.path());
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

TEST(Mapping, SaysWhyAFileCannotBeOpened) {
    TemporaryDirectory const directory;
    auto const path = directory.file("absent");
    EXPECT_EQ(errorOf<TableError>([&] { openFile(path); }),
              "table " + Vex::quoted(path) + ": cannot be opened: No such file or directory");
}

TEST(Mapping, AcceptsOnlyARegularFile) {
    TemporaryDirectory const directory;
    auto const pipe = directory.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (auto const & path : {directory.path().string(), pipe, std::string("/dev/null")}) {
        auto const file = openFile(path);
        EXPECT_EQ(errorOf<TableError>([&] { fileSize(file.number(), "t"); }),
                  "table 't': is no regular file");
    }
}

TEST(Mapping, SaysThatADescriptorIsNotOpen) {
    EXPECT_EQ(errorOf<TableError>([] { fileSize(-1, "t"); }),
              "table 't': cannot be examined: Bad file descriptor");
    EXPECT_EQ(errorOf<TableError>([] { duplicate(-1, "t"); }),
              "table 't': cannot be opened: Bad file descriptor");
}

TEST(Mapping, SaysThatADescriptorIsNotForReading) {
    TemporaryDirectory const directory;
    Descriptor const file(::open(directory.file("f").c_str(), O_WRONLY | O_CREAT, 0600));
    EXPECT_EQ(
        errorOf<TableError>([&] { Mapping(file.number(), 4096, Mapping::Access::read, "t"); }),
        "table 't': cannot be mapped: Permission denied");
}

TEST(Mapping, MemoryNeitherShrinksNorGrows) {
    auto const memory = makeMemory("t", 1000);
    EXPECT_EQ(fileSize(memory.number(), "t"), 1000U);
    EXPECT_EQ(::ftruncate(memory.number(), 999), -1);
    EXPECT_EQ(errno, EPERM);
    EXPECT_EQ(::ftruncate(memory.number(), 1001), -1);
    EXPECT_EQ(errno, EPERM);
}

TEST(Mapping, MemoryCanHaveALongName) {
    EXPECT_GE(makeMemory(std::string(5000, 'n'), 8).number(), 0);
}

TEST(Mapping, MappingsOfOneMemoryShareIt) {
    auto const memory = makeMemory("t", 16);
    Mapping const writable(memory.number(), 16, Mapping::Access::write, "t");
    Mapping const readable(memory.number(), 16, Mapping::Access::read, "t");
    writable.words()[1] = 42;
    EXPECT_EQ(readable.words()[1], 42U);
}

TEST(Mapping, ANewFileAppearsAtItsPathOnlyWhenItIsPublished) {
    TemporaryDirectory const directory;
    auto const path = directory.file("table");
    {
        NewFile const abandoned(path, 100);
        EXPECT_FALSE(std::filesystem::exists(path));
        EXPECT_EQ(filesIn(directory), 1U);
    }
    EXPECT_EQ(filesIn(directory), 0U);

    NewFile file(path, 100);
    auto const descriptor = file.publish();
    EXPECT_EQ(fileSize(descriptor.number(), "t"), 100U);
    EXPECT_EQ(std::filesystem::file_size(path), 100U);
    EXPECT_EQ(filesIn(directory), 1U);
}

TEST(Mapping, ANewFileIsReadableByAllAndWritableByItsOwner) {
    TemporaryDirectory const directory;
    auto const path = directory.file("table");
    NewFile(path, 100).publish();
    auto const permissions = std::filesystem::status(path).permissions();
    EXPECT_EQ(static_cast<unsigned>(permissions), 0644U);
}

TEST(Mapping, ANewFileNeedsADirectoryAndCannotReplaceOne) {
    TemporaryDirectory const directory;
    EXPECT_THROW(NewFile(directory.file("absent/table"), 100), TableError);
    std::filesystem::create_directory(directory.file("taken"));
    std::ofstream(directory.file("taken/file")) << "x";
    {
        NewFile file(directory.file("taken"), 100);
        EXPECT_THROW(file.publish(), TableError);
    }
    EXPECT_EQ(filesIn(directory), 1U);
}

TEST(Mapping, ANewFileThatCannotBeAllocatedLeavesNothingBehind) {
    TemporaryDirectory const directory;
    EXPECT_THROW(NewFile(directory.file("table"), U64{1} << 62), TableError);
    EXPECT_EQ(filesIn(directory), 0U);
}

TEST(Mapping, OwnMemoryIsZerosThatCanBeWritten) {
    Mapping const memory(100, "t");
    EXPECT_EQ(memory.size(), 100U);
    EXPECT_EQ(memory.words()[11], 0U);
    memory.words()[11] = 42;
    EXPECT_EQ(memory.words()[11], 42U);
}

TEST(Mapping, OwnMemoryThatTheSystemDoesNotHaveIsRefused) {
    EXPECT_EQ(errorOf<TableError>([] { Mapping(std::size_t{1} << 60, "t"); }),
              "table 't': cannot be given 1152921504606846976 bytes: Cannot allocate memory");
}

TEST(Mapping, AFileIsCopiedWithoutMovingItsOffset) {
    auto const memory = makeMemory("t", 16);
    RawMemory(memory.number()).put(8, U64{7});
    std::array<U64, 2> words{};
    copyFile(memory.number(), 0, words.data(), 16, "t");
    EXPECT_EQ(words[1], 7U);
    EXPECT_EQ(::lseek(memory.number(), 0, SEEK_CUR), 0);
}

TEST(Mapping, TheEndOfAFileIsCopied) {
    auto const memory = makeMemory("t", 24);
    RawMemory(memory.number()).put(16, U64{9});
    U64 word = 0;
    copyFile(memory.number(), 16, &word, 8, "t");
    EXPECT_EQ(word, 9U);
    EXPECT_EQ(
        errorOf<CorruptionDetectedException>([&] { copyFile(memory.number(), 20, &word, 8, "t"); }),
        "table 't', file: 24 bytes, expected 28");
}

TEST(Mapping, AFileThatIsTooShortToCopyIsDamaged) {
    auto const memory = makeMemory("t", 16);
    std::array<U64, 3> words{};
    EXPECT_EQ(errorOf<CorruptionDetectedException>(
                  [&] { copyFile(memory.number(), 0, words.data(), 24, "t"); }),
              "table 't', file: 16 bytes, expected 24");
    EXPECT_EQ(errorOf<TableError>([&] { copyFile(-1, 0, words.data(), 24, "t"); }),
              "table 't': cannot be read: Bad file descriptor");
}

} // namespace
} // namespace Pelo
