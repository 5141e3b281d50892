#include "vxshow/terminal/WrittenBytes.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace vxshow::test {

using namespace terminal;

namespace {

/// What is used for the first time can write by itself under a sanitizer:
/// UndefinedBehaviorSanitizer finds out by a write whether an object can be read.
class WrittenBytesTest : public testing::Test {
protected:
    WrittenBytesTest() {
        WrittenBytes const first;
        static_cast<void>(first.any());
    }
};

void writeSomething() {
    int const null = open("/dev/null", O_WRONLY | O_CLOEXEC);
    EXPECT_EQ(write(null, "text", 4), 4);
    close(null);
}

} // namespace

TEST_F(WrittenBytesTest, AreNoneAtFirst) {
    writeSomething();
    WrittenBytes const written;
    EXPECT_FALSE(written.any());
}

TEST_F(WrittenBytesTest, AreSeenOnAnyDescriptor) {
    WrittenBytes const written;
    writeSomething();
    EXPECT_TRUE(written.any());
}

TEST_F(WrittenBytesTest, OfAnotherThreadDoNotCount) {
    std::thread(writeSomething).join(); // for the first time
    WrittenBytes const written;
    std::thread(writeSomething).join();
    EXPECT_FALSE(written.any());
}

} // namespace vxshow::test
