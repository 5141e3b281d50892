#include "vxshow/system/FileBytes.h"

#include "tests/unit/vxshow/system/Interruptions.h"
#include "tests/unit/vxshow/system/Programs.h"
#include "tests/unit/vxshow/system/TextFile.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace vxshow::test {

using namespace system;

namespace {

bool isPadded(FileBytes const & bytes) {
    auto const * const end = bytes.text().data() + bytes.text().size();
    return std::all_of(end, end + FileBytes::padding, [](char c) { return c == 0; });
}

TEST(FileBytes, HoldsAWholeFileFollowedByZeros) {
    for (std::size_t size : {0U, 1U, 65535U, 65536U, 65537U, 300000U}) {
        std::string const text(size, 'x');
        TextFile const file(text);
        auto const bytes = FileBytes::open(file.path());
        EXPECT_TRUE(bytes.text() == text) << size;
        EXPECT_TRUE(isPadded(bytes)) << size;
    }
}

TEST(FileBytes, CopiesATextAndAddsZeros) {
    for (std::string const text : {"", "x", "a longer text"}) {
        auto const bytes = FileBytes::copyOf(text);
        EXPECT_EQ(bytes.text(), text);
        EXPECT_TRUE(isPadded(bytes));
    }
}

TEST(FileBytes, APartStaysInPlaceFollowedByAZero) {
    auto bytes = FileBytes::copyOf("first,second");
    auto const * const start = bytes.text().data();
    auto const first = bytes.padded(bytes.text().substr(0, 5));
    EXPECT_EQ(first.text(), "first");
    EXPECT_EQ(first.text().data(), start);
    EXPECT_EQ(start[5], '\0');
    auto const second = bytes.padded(bytes.text().substr(6));
    EXPECT_EQ(second.text(), "second");
    EXPECT_TRUE(isPadded(bytes));
    EXPECT_EQ(bytes.padded().text().size(), 12U);
}

TEST(FileBytes, OpeningAPipeGoesOnAfterASignal) {
    Folder const folder;
    auto const path = folder.path("pipe");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    auto writing = undisturbed([&] {
        Interruptions::waitFor(3);
        std::ofstream(path) << "late";
    });
    std::string read;
    {
        Interruptions const interruptions;
        EXPECT_NO_THROW(read = FileBytes::open(path).text());
    }
    if (read.empty()) {
        FileBytes::open(path); // lets the writer end
    }
    writing.join();
    EXPECT_EQ(read, "late");
}

TEST(FileBytes, ReadsAPipeToItsEnd) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    std::string text;
    for (int number = 0; number < 100000; ++number) {
        text.append(std::to_string(number));
    }
    std::jthread const writer([&] {
        for (std::size_t at = 0; at < text.size();) {
            auto const written = ::write(ends[1], text.data() + at, text.size() - at);
            at += static_cast<std::size_t>(std::max<ssize_t>(written, 0));
        }
        ::close(ends[1]);
    });
    auto const bytes = FileBytes::read(ends[0]);
    ::close(ends[0]);
    EXPECT_TRUE(bytes.text() == text);
    EXPECT_TRUE(isPadded(bytes));
}

TEST(FileBytes, ReadsAFileThatReportsNoSize) {
    EXPECT_FALSE(FileBytes::open("/proc/self/status").text().empty());
}

TEST(FileBytes, ADeviceWithoutAnEndIsRefusedAtOnce) {
    for (auto const * const device : {"/dev/zero", "/dev/urandom", "/dev/full"}) {
        EXPECT_THROW(FileBytes::open(device, 4096), std::length_error) << device;
        try {
            FileBytes::open(device, 4096);
        } catch (std::length_error const & error) {
            EXPECT_STREQ(error.what(),
                         "found a device that can have no end, expected a file, a pipe or a "
                         "terminal");
        }
    }
}

TEST(FileBytes, TheNullDeviceIsEmpty) {
    EXPECT_EQ(FileBytes::open("/dev/null").text(), "");
}

TEST(FileBytes, RaisesTheSystemsError) {
    try {
        FileBytes::open("/no/such/file");
        FAIL();
    } catch (std::system_error const & error) {
        EXPECT_EQ(error.code(), std::errc::no_such_file_or_directory);
    }
    EXPECT_THROW(FileBytes::open("/"), std::system_error);
    EXPECT_THROW(FileBytes::read(-1), std::system_error);
}

} // namespace

} // namespace vxshow::test
