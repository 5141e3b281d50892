#include "vxshow/mount/Members.h"

#include <array>
#include <gtest/gtest.h>

namespace vxshow {

namespace {

TEST(Members, AreListedForAReader) {
    std::array<std::string_view, 3> const names{"a", "b", "c"};
    std::span const all(names);
    EXPECT_EQ(oneOf(all.first(1)), R"("a")");
    EXPECT_EQ(oneOf(all.first(2)), R"("a" or "b")");
    EXPECT_EQ(oneOf(all), R"("a", "b" or "c")");
}

} // namespace

} // namespace vxshow
