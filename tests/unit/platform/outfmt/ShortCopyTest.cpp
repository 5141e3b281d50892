#include "outfmt/ShortCopy.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using outfmt::detail::copyShort;

std::string textOf(std::size_t length) {
    std::string text;
    while (text.size() < length) {
        text += static_cast<char>('!' + text.size() % 90);
    }
    return text;
}

TEST(ShortCopy, CopiesEveryLengthCompletely) {
    for (std::size_t length = 0; length <= 100; ++length) {
        std::string const text = textOf(length);
        std::string copy(length, '\0');
        copyShort(copy.data(), text.data(), length);
        EXPECT_EQ(copy, text) << length;
    }
}

TEST(ShortCopy, ReturnsTheEndOfTheCopy) {
    for (std::size_t length = 0; length <= 100; ++length) {
        std::string const text = textOf(length);
        std::string copy(length, '\0');
        EXPECT_EQ(copyShort(copy.data(), text.data(), length), copy.data() + length) << length;
    }
}

TEST(ShortCopy, LeavesTheBytesAroundTheCopyUnchanged) {
    for (std::size_t length = 0; length <= 100; ++length) {
        std::string const text = textOf(length);
        std::string copy(length + 80, ' ');
        copyShort(copy.data() + 40, text.data(), length);
        EXPECT_EQ(copy, std::string(40, ' ') + text + std::string(40, ' ')) << length;
    }
}

} // namespace
