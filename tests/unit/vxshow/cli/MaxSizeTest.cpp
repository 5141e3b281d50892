#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sys/resource.h>
#include <sys/wait.h>

namespace {

std::string tooLong(std::string const & found, std::size_t most) {
    return ": found " + found + " bytes, expected at most " + std::to_string(most) + "\n";
}

/// More than the program reads of anything but the state: its libraries' headers.
constexpr std::uintmax_t mostBytesBesideTheState = 500'000;

struct Read {
    std::optional<std::uintmax_t> bytes; ///< nullopt: not counted
    Finished finished;
};

/// How much the program reads to list the state in that file, or to refuse it. The system still
/// knows that of a process that has ended and is not yet waited for. The listing is small: it must
/// fit into the pipe.
Read bytesReadFrom(std::string const & path) {
    Process process({"--state", path, "--max-size", "64M", "mac", "received", "--vni", "1"});
    siginfo_t ended{};
    EXPECT_EQ(::waitid(P_PID, static_cast<id_t>(process.pid()), &ended, WEXITED | WNOWAIT), 0);
    std::ifstream file("/proc/" + std::to_string(process.pid()) + "/io");
    Read read;
    std::string word;
    std::uintmax_t bytes = 0;
    if (file >> word >> bytes && word == "rchar:") {
        read.bytes = bytes;
    }
    read.finished = process.finish();
    return read;
}

} // namespace

TEST(MaxSize, ASnapshotOfThatLengthIsRead) {
    auto const size = std::to_string(smallSnapshot().size());
    EXPECT_EQ(answer(smallSnapshot(), {"--max-size", size, "mac", "received"}),
              answer(smallSnapshot(), {"mac", "received"}));
}

TEST(MaxSize, ALongerSnapshotIsRefused) {
    auto const size = smallSnapshot().size();
    TemporaryFile const state(smallSnapshot());
    auto const finished = runVxshow(
        {"--state", state.path(), "--max-size", std::to_string(size - 1), "mac", "received"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "vxshow: " + state.path() + tooLong(std::to_string(size), size - 1));
}

TEST(MaxSize, ALongerStandardInputIsRefused) {
    auto const finished = runVxshow({"--state", "-", "--max-size", "1K", "mac", "received"},
                                    {.input = largeSnapshot(1000)});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.err, "vxshow: standard input" + tooLong("more than 1024", 1024));
}

TEST(MaxSize, ASizeHasASuffix) {
    for (auto const * const size : {"4096", "4K", "1M", "3G", "8G", "100000G"}) {
        EXPECT_NE(answer(smallSnapshot(), {"--max-size", size, "mac", "received"}), "") << size;
    }
}

TEST(MaxSize, WhatIsNotASizeIsRefused) {
    for (std::string const size : {"0", "x", "1k", "K", "1KB", "1.5G", "-1", "+1", " 1", "1 K",
                                   "18446744073709551616", "17179869184G"}) {
        EXPECT_EQ(refused({"--max-size=" + size, "mac", "received"}),
                  "--max-size: '" + size +
                      "': expected a number of bytes, such as 4096, 64K, 100M or 2G");
    }
}

TEST(MaxSize, ADeviceWithoutAnEndIsRefusedUnread) {
    TemporaryFile const large(largeSnapshot(20'000));
    auto const whole = std::filesystem::file_size(large.path());
    ASSERT_GT(whole, mostBytesBesideTheState);
    auto const read = bytesReadFrom(large.path());
    if (!read.bytes) {
        GTEST_SKIP() << "the system does not count the bytes that a process reads";
    }
    EXPECT_GE(*read.bytes, whole);

    auto const refused = bytesReadFrom("/dev/zero");
    EXPECT_LT(refused.bytes, mostBytesBesideTheState);
    EXPECT_EQ(refused.finished.status, 1);
    EXPECT_EQ(refused.finished.out, "");
    EXPECT_EQ(refused.finished.err, "vxshow: /dev/zero: found a device that can have no end, "
                                    "expected a file, a pipe or a terminal\n");
}

TEST(MaxSize, StandardInputCanBeNamedAsADevice) {
    auto const finished =
        runVxshow({"--state", "/dev/stdin", "mac", "received"}, {.input = smallSnapshot()});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, answer(smallSnapshot(), {"mac", "received"}));
}

TEST(MaxSize, ALimitOnFileSizesDoesNotApplyToAState) {
    auto const limited = [] {
        rlimit const limit{0, 0};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    for (auto const & snapshot : {smallSnapshot(), exampleFabric()}) {
        TemporaryFile const state(snapshot);
        auto const shown =
            runVxshow({"--state", state.path(), "mac", "received"}, {.inChild = limited});
        EXPECT_EQ(shown.status, 0);
        EXPECT_EQ(shown.err, "");
        EXPECT_EQ(shown.out, answer(snapshot, {"mac", "received"}));
    }
}
