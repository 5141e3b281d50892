#include "outfmt/OutputBuffer.h"

#include "Descriptors.h"
#include "outfmt/WriteError.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace outfmt::test {
namespace {

constexpr std::size_t capacity = OutputBuffer::capacity;

TEST(OutputBuffer, WritesNothingUntilItIsFlushed) {
    File file;
    {
        OutputBuffer buffer(file.fd(), OutputBuffer::Parting::anywhere);
        buffer.append(std::string(capacity, 'x'));
        EXPECT_EQ(file.content(), "");
    }
    EXPECT_EQ(file.content(), "");
}

TEST(OutputBuffer, WritesEverythingOnFlush) {
    File file;
    OutputBuffer buffer(file.fd(), OutputBuffer::Parting::lineEnds);
    buffer.append("line\nhalf a li");
    buffer.flush();
    EXPECT_EQ(file.content(), "line\nhalf a li");
    buffer.append("ne\n");
    buffer.flush();
    buffer.flush();
    EXPECT_EQ(file.content(), "line\nhalf a line\n");
}

/// Adds text with every function that adds; returns all that was added.
std::string addInEveryWay(OutputBuffer & buffer, std::string_view line, std::size_t size) {
    std::string added;
    for (std::size_t round = 0; added.size() < size; ++round) {
        switch (round % 4) {
        case 0:
            buffer.append(line);
            added += line;
            break;
        case 1:
            for (char character : line) {
                buffer.append(character);
            }
            added += line;
            break;
        case 2:
            buffer.fill('x', round % 1000);
            added.append(round % 1000, 'x');
            break;
        default:
            std::ranges::copy(line, buffer.reserve(OutputBuffer::maxReserve));
            buffer.commit(line.size());
            added += line;
            break;
        }
    }
    return added;
}

TEST(OutputBuffer, KeepsTheOrderOfAllWaysOfAdding) {
    for (auto parting : {OutputBuffer::Parting::anywhere, OutputBuffer::Parting::lineEnds}) {
        for (std::string_view line : {"a short line\n", "no line end", "\n"}) {
            File file;
            OutputBuffer buffer(file.fd(), parting);
            std::string added = addInEveryWay(buffer, line, 20 * capacity);
            buffer.flush();
            EXPECT_TRUE(file.content() == added);
        }
    }
}

TEST(OutputBuffer, SplitsTextAtLineEndsWhenItIsFull) {
    for (std::size_t length : {1U, 10U, 80U, 4095U, 40000U, 65535U}) {
        File file;
        OutputBuffer buffer(file.fd(), OutputBuffer::Parting::lineEnds);
        std::string line = std::string(length, 'x') + "\n";
        std::string all;
        while (all.size() < 5 * capacity) {
            buffer.append(line);
            all += line;
        }
        std::string written = file.content();
        EXPECT_TRUE(written.ends_with('\n')) << length;
        EXPECT_GT(written.size(), 2 * capacity) << length;
        EXPECT_TRUE(all.starts_with(written)) << length;
    }
}

TEST(OutputBuffer, SplitsALineLongerThanTheBuffer) {
    File file;
    OutputBuffer buffer(file.fd(), OutputBuffer::Parting::lineEnds);
    std::string line(3 * capacity, 'x');
    buffer.append("first\n");
    buffer.append(line);
    buffer.append("\n");
    EXPECT_GT(file.content().size(), capacity);
    buffer.flush();
    EXPECT_TRUE(file.content() == "first\n" + line + "\n");
}

TEST(OutputBuffer, WritesAllWholeLinesWhenItIsFull) {
    File file;
    OutputBuffer buffer(file.fd(), OutputBuffer::Parting::lineEnds);
    for (std::size_t size = 0; size <= capacity; size += 10) {
        buffer.append("ten bytes\n");
    }
    EXPECT_EQ(file.content().size(), capacity / 10 * 10);
}

TEST(OutputBuffer, ReservesRoomAfterALongLine) {
    File file;
    OutputBuffer buffer(file.fd(), OutputBuffer::Parting::lineEnds);
    std::string begun = "line\n" + std::string(capacity - 100, 'x');
    buffer.append(begun);
    std::string rest(OutputBuffer::maxReserve, 'y');
    std::ranges::copy(rest, buffer.reserve(rest.size()));
    buffer.commit(rest.size());
    EXPECT_TRUE(file.content() == begun);
    buffer.flush();
    EXPECT_TRUE(file.content() == begun + rest);
}

TEST(OutputBuffer, NeedsFewWrites) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_DIRECT | O_CLOEXEC), 0); // keeps the writes apart
    Fd reader(ends[0]);
    Fd writer(ends[1]);
    OutputBuffer buffer(writer.get(), OutputBuffer::Parting::lineEnds);
    for (int count = 0; count < 100; ++count) {
        buffer.append("a line\n");
    }
    buffer.flush();
    char bytes[4096];
    EXPECT_EQ(::read(reader.get(), bytes, sizeof bytes), 700);
}

/// Interrupts a flush of `bytes` whose reader has stopped, continues to print, and
/// returns what arrived.
std::string receivedAroundAnInterrupt(OutputBuffer::Parting parting, std::string_view bytes,
                                      std::string_view more) {
    CleanInterruptFlag clean;
    Pipe pipe;
    ::fcntl(pipe.writer.get(), F_SETPIPE_SZ, 16384);
    OutputBuffer buffer(pipe.writer.get(), parting);
    buffer.append(bytes);
    std::thread user([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        requestInterrupt();
    });
    EXPECT_THROW(buffer.flush(), SigIntException);
    user.join();
    clearInterrupt();

    std::string received;
    std::thread reading([&] { received = readAll(pipe.reader.get()); });
    buffer.append(more);
    buffer.flush();
    pipe.writer.close();
    reading.join();
    return received;
}

TEST(OutputBuffer, NeverRepeatsWhatWasWrittenBeforeAnException) {
    std::string lines;
    for (int number = 0; lines.size() < 60000; ++number) {
        lines += "line " + std::to_string(number) + "\n";
    }
    lines += "half a line";
    std::string oneLongLine = "line\n" + std::string(60000, 'x');
    std::string more(2 * capacity, 'y');
    for (auto parting : {OutputBuffer::Parting::anywhere, OutputBuffer::Parting::lineEnds}) {
        for (std::string const & bytes : {lines, oneLongLine}) {
            EXPECT_TRUE(receivedAroundAnInterrupt(parting, bytes, more) == bytes + more);
        }
    }
}

TEST(OutputBuffer, ReportsAFullDiskFromEveryCallThatWrites) {
    Fd full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    OutputBuffer buffer(full.get(), OutputBuffer::Parting::anywhere);
    buffer.append(std::string(capacity, 'x'));
    EXPECT_THROW(buffer.append('x'), WriteError);
    EXPECT_THROW(buffer.append("xx"), WriteError);
    EXPECT_THROW(buffer.fill('x', 2), WriteError);
    EXPECT_THROW(buffer.reserve(2), WriteError);
    EXPECT_THROW(buffer.flush(), WriteError);
}

} // namespace
} // namespace outfmt::test
