#include "vxshow/state/narrow/Prefixes.h"

#include <gtest/gtest.h>

namespace {

std::string lastOf(char const * prefix) {
    return vxshow::state::narrow::lastAddress(Nolt::IpGenPrefix::fromString(prefix)).stringValue();
}

} // namespace

TEST(Prefixes, TheLastAddressHasEveryBitSetBeyondTheLength) {
    EXPECT_EQ(lastOf("10.0.0.0/24"), "10.0.0.255");
    EXPECT_EQ(lastOf("10.0.0.7/32"), "10.0.0.7");
    EXPECT_EQ(lastOf("0.0.0.0/0"), "255.255.255.255");
    EXPECT_EQ(lastOf("128.0.0.0/1"), "255.255.255.255");
    EXPECT_EQ(lastOf("2001:db8::/32"), "2001:db8:ffff:ffff:ffff:ffff:ffff:ffff");
    EXPECT_EQ(lastOf("2001:db8::/64"), "2001:db8::ffff:ffff:ffff:ffff");
    EXPECT_EQ(lastOf("2001:db8::/65"), "2001:db8::7fff:ffff:ffff:ffff");
    EXPECT_EQ(lastOf("2001:db8::/63"), "2001:db8:0:1:ffff:ffff:ffff:ffff");
    EXPECT_EQ(lastOf("2001:db8::1/128"), "2001:db8::1");
    EXPECT_EQ(lastOf("::/0"), "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff");
    EXPECT_EQ(lastOf(""), "");
}
