#include "vxshow/system/OwnedDescriptor.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace vxshow::test {

using namespace system;

namespace {

OwnedDescriptor openNull() {
    return OwnedDescriptor(open("/dev/null", O_RDONLY | O_CLOEXEC));
}

bool isOpen(int number) {
    return fcntl(number, F_GETFD) >= 0;
}

} // namespace

TEST(OwnedDescriptor, HoldsNoneAtFirst) {
    EXPECT_FALSE(OwnedDescriptor().isOpen());
    EXPECT_FALSE(OwnedDescriptor(-1).isOpen());
}

TEST(OwnedDescriptor, IsClosedByTheDestructor) {
    int number = -1;
    {
        auto const file = openNull();
        number = file.number();
        EXPECT_TRUE(isOpen(number));
    }
    EXPECT_FALSE(isOpen(number));
}

TEST(OwnedDescriptor, CanBeClosedEarly) {
    auto file = openNull();
    int const number = file.number();
    file.close();
    EXPECT_FALSE(file.isOpen());
    EXPECT_FALSE(isOpen(number));
}

TEST(OwnedDescriptor, AssignmentClosesTheOldOne) {
    auto file = openNull();
    int const number = file.number();
    auto other = openNull();
    int const kept = other.number();
    file = std::move(other);
    other.close();
    EXPECT_EQ(file.number(), kept);
    EXPECT_TRUE(isOpen(kept));
    EXPECT_FALSE(isOpen(number));
}

TEST(OwnedDescriptor, ReleaseLeavesItOpen) {
    auto file = openNull();
    int const number = file.release();
    EXPECT_FALSE(file.isOpen());
    EXPECT_TRUE(isOpen(number));
    close(number);
}

} // namespace vxshow::test
