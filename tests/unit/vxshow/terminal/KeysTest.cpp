#include "vxshow/terminal/Keys.h"

#include <gtest/gtest.h>

#include <vector>

namespace vxshow::test {

using terminal::Key;

namespace {

std::vector<Key> keysOf(std::string_view typed) {
    std::vector<Key> keys;
    while (!typed.empty()) {
        keys.push_back(terminal::takeKey(typed));
    }
    return keys;
}

} // namespace

TEST(Keys, ArrowsPagesAndLetters) {
    EXPECT_EQ(keysOf("q"), std::vector{Key::quit});
    EXPECT_EQ(keysOf("\x1b[A\x1b[B\x1bOA\x1bOB"),
              (std::vector{Key::lineUp, Key::lineDown, Key::lineUp, Key::lineDown}));
    EXPECT_EQ(keysOf("\x1b[5~\x1b[6~\x1b[H\x1b[F"),
              (std::vector{Key::pageUp, Key::pageDown, Key::top, Key::bottom}));
}

TEST(Keys, UnknownOnesAreSkippedWhole) {
    EXPECT_EQ(keysOf("x\x1b[1;5Aq"), (std::vector{Key::none, Key::none, Key::quit}));
    EXPECT_EQ(keysOf("\x1b[15~q"), (std::vector{Key::none, Key::quit}));
}

TEST(Keys, ACutSequenceIsNoKey) {
    EXPECT_EQ(keysOf("\x1b"), std::vector{Key::none});
    EXPECT_EQ(keysOf("\x1b["), std::vector{Key::none});
    EXPECT_EQ(keysOf("\x1b[5"), std::vector{Key::none});
    std::string_view nothing;
    EXPECT_EQ(terminal::takeKey(nothing), Key::none);
}

} // namespace vxshow::test
