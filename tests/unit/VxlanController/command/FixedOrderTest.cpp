#include "VxlanController/command/FixedOrder.h"

#include "tests/unit/platform/Vex/ChosenKeys.h"

#include <gtest/gtest.h>

#include <vector>

using namespace VxlanController;
using Bridging::VlanIdOrNone;
using Cli::comesFirst;
using Cli::fixedNumber;

// Listings show these orders, so the numbers never change.
TEST(FixedOrder, TheNumbersOfKeysAreFixed) {
    EXPECT_EQ(fixedNumber(""), 0x553e93901e462a6eU);
    EXPECT_EQ(fixedNumber("leaf1"), 0x867bd3bbfb5049baU);
    EXPECT_EQ(fixedNumber(Nolt::IpAddr(0x0A000001)), 0x8a975842f4745f16U);
    EXPECT_EQ(fixedNumber(PortVlanPairV2{"Et1", VlanIdOrNone(100)}), 0xbd3ce3d5eae9e3f5U);
    EXPECT_EQ(fixedNumber(IpVtepKeyPair{Nolt::IpAddr(0x0A000001), ""}), 0xb3698c6dac30c2c0U);
    EXPECT_EQ(fixedNumber(IpVtepKeyPair{Nolt::IpGenAddr::ipv6(0x20010db800000000U, 1), "Vxlan1"}),
              0x2f4461132031fe0eU);
}

TEST(FixedOrder, ASmallerNumberComesFirst) {
    std::vector<Nolt::IpAddr> addresses;
    for (Vex::U32 i = 0; i < 100; ++i) {
        addresses.emplace_back(0x0A000000 + i);
    }
    for (auto const a : addresses) {
        for (auto const b : addresses) {
            EXPECT_EQ(comesFirst(a, b), fixedNumber(a) < fixedNumber(b));
        }
    }
}

TEST(FixedOrder, NamesWithOneNumberAreOrderedAsNames) {
    std::string const a = ChosenKeys::sameStandardHash(1);
    std::string const b = ChosenKeys::sameStandardHash(2);
    ASSERT_EQ(fixedNumber(a), fixedNumber(b));
    EXPECT_EQ(comesFirst(Vex::Name(a), Vex::Name(b)), a < b);
    EXPECT_EQ(comesFirst(Vex::Name(b), Vex::Name(a)), b < a);
    EXPECT_FALSE(comesFirst(Vex::Name(a), Vex::Name(a)));
}
