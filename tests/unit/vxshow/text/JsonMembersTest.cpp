#include "vxshow/text/JsonMembers.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace vxshow::test {

using namespace text;

namespace {

TEST(JsonMembers, AreListedForAMessage) {
    std::array<MemberName, 3> const names{"a", "b", "c"};
    std::span const all(names);
    EXPECT_EQ(oneOf(all.first(1)), R"("a")");
    EXPECT_EQ(oneOf(all.first(2)), R"("a" or "b")");
    EXPECT_EQ(oneOf(all), R"("a", "b" or "c")");
}

TEST(JsonMembers, NamesOfAnyLengthMatchOnlyTheirBytesAndAQuote) {
    std::string const letters = "abcdefghijklmnopqrst";
    std::string const room(16, ' ');
    for (std::size_t length = 0; length <= letters.size(); ++length) {
        auto const text = letters.substr(0, length);
        MemberName const name(text);
        EXPECT_TRUE(name.standsAt((text + "\":1" + room).c_str())) << text;
        EXPECT_FALSE(name.standsAt((text + "x\"" + room).c_str())) << text;
        EXPECT_FALSE(name.standsAt((text + "\\\"" + room).c_str())) << text;
        for (std::size_t at = 0; at < length; ++at) {
            auto other = text;
            for (char const wrong : {'"', 'A', '\0', '\\', '\xff'}) {
                other[at] = wrong;
                EXPECT_FALSE(name.standsAt((other + "\"" + room).c_str())) << text << " " << at;
            }
        }
    }
}

} // namespace

} // namespace vxshow::test
