#include "vxshow/terminal/WrittenBytes.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace vxshow::test {

using namespace terminal;

namespace {

void writeSomething() {
    int const null = open("/dev/null", O_WRONLY | O_CLOEXEC);
    EXPECT_EQ(write(null, "text", 4), 4);
    close(null);
}

} // namespace

TEST(WrittenBytes, AreNoneAtFirst) {
    writeSomething();
    WrittenBytes const written;
    EXPECT_FALSE(written.any());
}

TEST(WrittenBytes, AreSeenOnAnyDescriptor) {
    WrittenBytes const written;
    writeSomething();
    EXPECT_TRUE(written.any());
}

TEST(WrittenBytes, OfAnotherThreadDoNotCount) {
    WrittenBytes const written;
    std::thread(writeSomething).join();
    EXPECT_FALSE(written.any());
}

} // namespace vxshow::test
