#include "tests/unit/vxshow/Answers.h"
#include "tests/unit/vxshow/Process.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sys/resource.h>

using namespace std::chrono_literals;

namespace {

std::string tooLong(std::string const & found, std::size_t most) {
    return ": found " + found + " bytes, expected at most " + std::to_string(most) + "\n";
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
    auto const finished = vxshow(
        {"--state", state.path(), "--max-size", std::to_string(size - 1), "mac", "received"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "vxshow: " + state.path() + tooLong(std::to_string(size), size - 1));
}

TEST(MaxSize, ALongerStandardInputIsRefused) {
    auto const finished = vxshow({"--state", "-", "--max-size", "1K", "mac", "received"},
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

TEST(MaxSize, ADeviceWithoutAnEndIsRefusedAtOnce) {
    auto const start = std::chrono::steady_clock::now();
    auto const finished = vxshow({"--state", "/dev/zero", "--max-size", "64M", "mac", "received"});
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "vxshow: /dev/zero: found a device that can have no end, expected a "
                            "file, a pipe or a terminal\n");
}

TEST(MaxSize, StandardInputCanBeNamedAsADevice) {
    auto const finished =
        vxshow({"--state", "/dev/stdin", "mac", "received"}, {.input = smallSnapshot()});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, answer(smallSnapshot(), {"mac", "received"}));
}

TEST(MaxSize, ALimitOnFileSizesIsOneLineOrNothing) {
    auto const limited = [] {
        rlimit const limit{0, 0};
        setrlimit(RLIMIT_FSIZE, &limit);
    };
    TemporaryFile const withoutTables(smallSnapshot());
    auto const shown =
        vxshow({"--state", withoutTables.path(), "mac", "received"}, {.inChild = limited});
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.out, answer(smallSnapshot(), {"mac", "received"}));
    TemporaryFile const withTables(exampleFabric());
    auto const failed =
        vxshow({"--state", withTables.path(), "mac", "received"}, {.inChild = limited});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.out, "");
    EXPECT_NE(failed.err.find(": File too large"), std::string::npos) << failed.err;
    EXPECT_EQ(failed.err.find('\n'), failed.err.size() - 1) << failed.err;
}
