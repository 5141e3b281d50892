#include "outfmt/WriteError.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace outfmt {
namespace {

TEST(WriteError, NamesTheDescriptorAndTheReason) {
    WriteError error(4, ENOSPC);
    EXPECT_STREQ(error.what(), "cannot write to descriptor 4: No space left on device");
    EXPECT_EQ(error.code(), ENOSPC);
}

TEST(WriteError, IsAnErrorOfTheFramework) {
    EXPECT_THROW(throw WriteError(1, EPIPE), Vex::Error);
}

} // namespace
} // namespace outfmt
