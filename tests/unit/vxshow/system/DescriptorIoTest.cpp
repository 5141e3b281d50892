#include "vxshow/system/DescriptorIo.h"

#include "tests/unit/vxshow/system/Interruptions.h"
#include "vxshow/system/OwnedDescriptor.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace vxshow::test {

using namespace system;

namespace {

struct Pipe {
    OwnedDescriptor reader;
    OwnedDescriptor writer;

    Pipe() {
        int ends[2];
        EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
        reader = OwnedDescriptor(ends[0]);
        writer = OwnedDescriptor(ends[1]);
    }
};

/// Reads until the other end is closed.
std::string readToEnd(OwnedDescriptor const & reader) {
    std::string text;
    std::array<char, 4096> piece;
    for (;;) {
        auto const [bytes, error] = readSome(reader.number(), piece);
        EXPECT_FALSE(error) << error.message();
        if (bytes == 0) {
            return text;
        }
        text.append(piece.data(), bytes);
    }
}

} // namespace

TEST(DescriptorIo, WritesAllThatAPipeTakesInPieces) {
    Pipe pipe;
    std::string const text(1'000'000, 'x');
    std::string read;
    std::thread reading([&] { read = readToEnd(pipe.reader); });
    EXPECT_FALSE(writeAll(pipe.writer.number(), text));
    pipe.writer.close();
    reading.join();
    EXPECT_EQ(read.size(), text.size());
}

TEST(DescriptorIo, WritingGoesOnAfterASignal) {
    Pipe pipe;
    std::string const text(1'000'000, 'x');
    std::string read;
    auto reading = undisturbed([&] {
        Interruptions::waitFor(3);
        read = readToEnd(pipe.reader);
    });
    {
        Interruptions const interruptions;
        EXPECT_FALSE(writeAll(pipe.writer.number(), text));
    }
    pipe.writer.close();
    reading.join();
    EXPECT_EQ(read.size(), text.size());
}

TEST(DescriptorIo, ReadingGoesOnAfterASignal) {
    Pipe pipe;
    auto writing = undisturbed([&] {
        Interruptions::waitFor(3);
        EXPECT_FALSE(writeAll(pipe.writer.number(), "late"));
    });
    std::array<char, 10> room;
    ReadResult result;
    {
        Interruptions const interruptions;
        result = readSome(pipe.reader.number(), room);
    }
    writing.join();
    EXPECT_FALSE(result.error);
    EXPECT_EQ(std::string_view(room.data(), result.bytes), "late");
}

TEST(DescriptorIo, AFullDiskIsAnError) {
    OwnedDescriptor const full(open("/dev/full", O_WRONLY | O_CLOEXEC));
    EXPECT_EQ(writeAll(full.number(), "text"), std::errc::no_space_on_device);
}

TEST(DescriptorIo, WritingNothingIsNoError) {
    EXPECT_FALSE(writeAll(-1, ""));
}

TEST(DescriptorIo, AClosedDescriptorIsAnError) {
    std::array<char, 10> room;
    auto const result = readSome(-1, room);
    EXPECT_EQ(result.error, std::errc::bad_file_descriptor);
    EXPECT_EQ(result.bytes, 0U);
    EXPECT_EQ(writeAll(-1, "text"), std::errc::bad_file_descriptor);
}

TEST(DescriptorIo, TheEndOfAFileIsNoBytesAndNoError) {
    OwnedDescriptor const empty(open("/dev/null", O_RDONLY | O_CLOEXEC));
    std::array<char, 10> room;
    auto const result = readSome(empty.number(), room);
    EXPECT_FALSE(result.error);
    EXPECT_EQ(result.bytes, 0U);
}

TEST(DescriptorIo, AnEmptyNonBlockingPipeIsReportedAsSuch) {
    Pipe pipe;
    ASSERT_EQ(fcntl(pipe.reader.number(), F_SETFL, O_NONBLOCK), 0);
    std::array<char, 10> room;
    EXPECT_EQ(readSome(pipe.reader.number(), room).error,
              std::errc::resource_unavailable_try_again);
}

} // namespace vxshow::test
