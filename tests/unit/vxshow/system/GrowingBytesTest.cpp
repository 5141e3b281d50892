#include "vxshow/system/GrowingBytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace vxshow::test {

using namespace system;

namespace {

/// Adds as much of `text` as there is room for and returns how much that was.
std::size_t put(GrowingBytes & bytes, std::string_view text) {
    std::size_t taken = 0;
    while (taken < text.size() && !bytes.isTooLong()) {
        auto const room = bytes.room();
        auto const count = std::min(room.size(), text.size() - taken);
        std::copy_n(text.data() + taken, count, room.data());
        bytes.add(count);
        taken += count;
    }
    return taken;
}

TEST(GrowingBytes, AreEmptyAtFirst) {
    GrowingBytes bytes(1000);
    EXPECT_EQ(bytes.take().text(), "");
}

TEST(GrowingBytes, KeepTheirContentWhileTheyGrow) {
    std::string text;
    for (int number = 0; number < 200'000; ++number) {
        text.append(std::to_string(number));
    }
    GrowingBytes bytes(FileBytes::longest);
    EXPECT_EQ(put(bytes, text), text.size());
    EXPECT_EQ(bytes.size(), text.size());
    auto const taken = bytes.take();
    EXPECT_TRUE(taken.text() == text);
    auto const * const end = taken.text().data() + taken.text().size();
    EXPECT_TRUE(std::all_of(end, end + FileBytes::padding, [](char c) { return c == 0; }));
}

TEST(GrowingBytes, AreNotCopiedWhenTaken) {
    GrowingBytes bytes(1000);
    auto const * const start = bytes.room().data();
    put(bytes, "text");
    EXPECT_EQ(bytes.take().text().data(), start);
}

TEST(GrowingBytes, NoticeTheFirstByteTooMany) {
    for (std::size_t most : {0U, 1U, 65535U, 65536U, 65537U, 200'000U}) {
        GrowingBytes enough(most);
        EXPECT_EQ(put(enough, std::string(most, 'x')), most);
        EXPECT_FALSE(enough.isTooLong()) << most;
        EXPECT_EQ(put(enough, "more"), 1U) << most;
        EXPECT_TRUE(enough.isTooLong()) << most;
    }
}

} // namespace

} // namespace vxshow::test
