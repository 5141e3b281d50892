#include "state/MacVtepMultiPathV2.h"

#include <gtest/gtest.h>

using Nolt::EthAddr;
using Nolt::IpAddr;
using VxlanController::MacVtepMultiPathV2;

TEST(MacVtepMultiPathV2, IsEmptyOnlyWithoutMacAndVteps) {
    EXPECT_TRUE(!MacVtepMultiPathV2());
    EXPECT_FALSE(!MacVtepMultiPathV2(EthAddr::fromString("02:00:00:00:00:01")));
    MacVtepMultiPathV2 zeroMac;
    zeroMac.vtepIpIs(IpAddr(1), true);
    EXPECT_FALSE(!zeroMac);
}

TEST(MacVtepMultiPathV2, EqualityComparesMacAndAllVteps) {
    MacVtepMultiPathV2 a(EthAddr::fromString("02:00:00:00:00:01"));
    a.vtepIpIs(IpAddr(1), true);
    MacVtepMultiPathV2 b = a;
    EXPECT_EQ(a, b);
    b.vtepIpIs(IpAddr(1), false);
    EXPECT_FALSE(a == b);
    b.vtepIpIs(IpAddr(1), true);
    b.vtepIpIs(IpAddr(2), true);
    EXPECT_FALSE(a == b);
}
