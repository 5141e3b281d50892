#include "vxshow/system/MemoryFile.h"

#include "vxshow/system/DescriptorIo.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace system;

TEST(MemoryFile, IsEmptyAtFirst) {
    EXPECT_EQ(MemoryFile().bytes().text(), "");
}

TEST(MemoryFile, HoldsAllThatWasWritten) {
    MemoryFile file;
    ASSERT_FALSE(writeAll(file.descriptor(), "first, "));
    ASSERT_FALSE(writeAll(file.descriptor(), "second"));
    EXPECT_EQ(file.bytes().text(), "first, second");
}

TEST(MemoryFile, CanBeReadRepeatedly) {
    MemoryFile file;
    ASSERT_FALSE(writeAll(file.descriptor(), "text"));
    EXPECT_EQ(file.bytes().text(), "text");
    EXPECT_EQ(file.bytes().text(), "text");
}

} // namespace vxshow::test
