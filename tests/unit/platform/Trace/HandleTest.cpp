#include "Trace/Handle.h"

#include "Captured.h"

#include <gtest/gtest.h>
#include <memory>

namespace Trace::test {
namespace {

std::string levelsOf(Handle const & handle) {
    std::string on;
    for (unsigned level = 0; level < 40; ++level) {
        if (handle.enabled(level)) {
            on += std::to_string(level) + " ";
        }
    }
    return on;
}

TEST(Handle, StartsWithAllLevelsOff) {
    LevelsOff clean;
    Handle handle("test");
    EXPECT_EQ(handle.name(), "test");
    EXPECT_EQ(levelsOf(handle), "");
}

TEST(Handle, EnablesLevelsUpToAGivenOne) {
    LevelsOff clean;
    Handle handle("test");
    handle.enableUpTo(3);
    EXPECT_EQ(levelsOf(handle), "0 1 2 3 ");
    handle.enableUpTo(0);
    EXPECT_EQ(levelsOf(handle), "0 ");
    handle.enableUpTo(9);
    EXPECT_EQ(levelsOf(handle), "0 1 2 3 4 5 6 7 8 9 ");
    handle.enableUpTo(4000);
    EXPECT_EQ(levelsOf(handle), "0 1 2 3 4 5 6 7 8 9 ");
    handle.disable();
    EXPECT_EQ(levelsOf(handle), "");
}

TEST(Handle, EnablesSingleLevels) {
    LevelsOff clean;
    Handle handle("test");
    handle.enable(8, true);
    handle.enable(1, true);
    handle.enable(10, true);
    handle.enable(32, true);
    EXPECT_EQ(levelsOf(handle), "1 8 ");
    handle.enable(8, false);
    handle.enable(33, false);
    EXPECT_EQ(levelsOf(handle), "1 ");
}

TEST(Handle, IsConfiguredTogetherWithAllOthers) {
    LevelsOff clean;
    Handle before("before");
    before.enable(9, true);
    enableAllUpTo(2);
    Handle after("after");
    EXPECT_EQ(levelsOf(before), "0 1 2 ");
    EXPECT_EQ(levelsOf(after), "0 1 2 ");
    disableAll();
    Handle later("later");
    EXPECT_EQ(levelsOf(before) + levelsOf(after) + levelsOf(later), "");
}

TEST(Handle, IsConfiguredByItsName) {
    LevelsOff clean;
    Handle first("same");
    Handle second("same");
    Handle other("other");
    EXPECT_TRUE(enableUpTo("same", 1));
    EXPECT_EQ(levelsOf(first), "0 1 ");
    EXPECT_EQ(levelsOf(second), "0 1 ");
    EXPECT_EQ(levelsOf(other), "");
    EXPECT_FALSE(enableUpTo("sam", 1));
}

TEST(Handle, IsUnregisteredWhenItIsDestroyed) {
    LevelsOff clean;
    auto handle = std::make_unique<Handle>("gone");
    EXPECT_TRUE(enableUpTo("gone", 1));
    handle.reset();
    EXPECT_FALSE(enableUpTo("gone", 1));
    enableAllUpTo(9);
}

} // namespace
} // namespace Trace::test
