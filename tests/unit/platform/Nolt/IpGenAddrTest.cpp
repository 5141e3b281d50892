#include "Nolt/IpGenAddr.h"

#include "tests/unit/platform/Nolt/ValueChecks.h"

#include <type_traits>

using Nolt::Family;
using Nolt::IpAddr;
using Nolt::IpGenAddr;
using Vex::U64;

static_assert(std::is_trivially_copyable_v<IpGenAddr>);
static_assert(std::is_convertible_v<IpAddr, IpGenAddr>);
static_assert(IpGenAddr().isNone());
static_assert(IpGenAddr(IpAddr(1)).ipv4() == IpAddr(1));

namespace {

constexpr auto ones = ~U64{0};

IpGenAddr address(std::string_view text) {
    return IpGenAddr::fromString(text);
}

} // namespace

TEST(IpGenAddr, IsEmptyByDefault) {
    EXPECT_EQ(IpGenAddr().family(), Family::none);
    EXPECT_TRUE(IpGenAddr().isNone());
    EXPECT_EQ(IpGenAddr().bitLength(), 0U);
    valuechecks::expectText(IpGenAddr(), "");
}

TEST(IpGenAddr, ZeroAddressesDifferFromNone) {
    EXPECT_FALSE(address("0.0.0.0").isNone());
    EXPECT_FALSE(address("::").isNone());
    EXPECT_FALSE(address("0.0.0.0") == IpGenAddr());
    EXPECT_FALSE(address("::") == IpGenAddr());
    EXPECT_FALSE(address("::") == address("0.0.0.0"));
}

TEST(IpGenAddr, ReadsIpv4AsTheIpv4TypeDoes) {
    auto const wide = address("10.0.0.1");
    EXPECT_EQ(wide.family(), Family::ipv4);
    EXPECT_EQ(wide.bitLength(), 32U);
    EXPECT_TRUE(wide.ipv4() == IpAddr(0x0A000001));
    EXPECT_EQ(wide.high(), 0U);
    EXPECT_EQ(wide.low(), 0x0A000001U);
    valuechecks::expectText(wide, "10.0.0.1");
    valuechecks::expectRefused<IpGenAddr>({" ", "1.2.3", "1.2.3.4.5", "01.2.3.4", "1.2.3.256",
                                           "1.2.3.4 ", "1.2.3.4/32", "localhost", "none"});
}

TEST(IpGenAddr, WidensAnIpv4Address) {
    IpAddr const narrow(0xC0000201);
    IpGenAddr const wide = narrow;
    EXPECT_TRUE(wide == address("192.0.2.1"));
    EXPECT_TRUE(wide == narrow);
    EXPECT_TRUE(narrow == wide);
    EXPECT_TRUE(narrow < address("::"));
}

TEST(IpGenAddr, HasAnIpv4AddressOnlyIfItIsOne) {
    EXPECT_TRUE(address("::ffff:10.0.0.1").ipv4() == IpAddr());
    EXPECT_TRUE(IpGenAddr().ipv4() == IpAddr());
}

TEST(IpGenAddr, TakesIpv6BytesInTheOrderOfTransmission) {
    IpGenAddr const made(
        IpGenAddr::Ipv6Bytes{0x20, 1, 0xd, 0xb8, 0, 0, 0, 2, 0xfe, 3, 0, 0, 0, 0, 0, 0x17});
    EXPECT_EQ(made.family(), Family::ipv6);
    EXPECT_EQ(made.bitLength(), 128U);
    EXPECT_EQ(made.high(), 0x20010db800000002U);
    EXPECT_EQ(made.low(), 0xfe03000000000017U);
    valuechecks::expectText(made, "2001:db8:0:2:fe03::17");
}

TEST(IpGenAddr, AMappedAddressDiffersFromTheIpv4Address) {
    EXPECT_EQ(address("::ffff:10.0.0.1").family(), Family::ipv6);
    EXPECT_FALSE(address("::ffff:10.0.0.1") == address("10.0.0.1"));
}

TEST(IpGenAddr, IsOrderedByFamilyThenByBytes) {
    valuechecks::expectAscending<IpGenAddr>({
        IpGenAddr(),
        address("0.0.0.0"),
        address("9.255.255.255"),
        address("10.0.0.1"),
        address("128.0.0.0"),
        address("255.255.255.255"),
        address("::"),
        address("::1"),
        address("::8000:0:0:0"),
        address("::ffff:ffff:ffff:ffff"),
        address("0:0:0:1::"),
        address("2001:db8::"),
        address("2001:db8::1:0:0:0"),
        address("8000::"),
        address("ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"),
    });
}

TEST(IpGenAddr, MasksIpv4) {
    auto const full = address("255.255.255.255");
    EXPECT_EQ(full.masked(0).stringValue(), "0.0.0.0");
    EXPECT_EQ(full.masked(1).stringValue(), "128.0.0.0");
    EXPECT_EQ(full.masked(12).stringValue(), "255.240.0.0");
    EXPECT_EQ(full.masked(31).stringValue(), "255.255.255.254");
    for (unsigned const length : {32U, 33U, 64U, 128U, ~0U}) {
        EXPECT_TRUE(full.masked(length) == full) << length;
    }
}

TEST(IpGenAddr, MasksIpv6) {
    auto const full = IpGenAddr::ipv6(ones, ones);
    EXPECT_TRUE(full.masked(0) == IpGenAddr::ipv6(0, 0));
    EXPECT_TRUE(full.masked(1) == IpGenAddr::ipv6(U64{1} << 63, 0));
    EXPECT_TRUE(full.masked(63) == IpGenAddr::ipv6(ones << 1, 0));
    EXPECT_TRUE(full.masked(64) == IpGenAddr::ipv6(ones, 0));
    EXPECT_TRUE(full.masked(65) == IpGenAddr::ipv6(ones, U64{1} << 63));
    EXPECT_TRUE(full.masked(127) == IpGenAddr::ipv6(ones, ones << 1));
    for (unsigned const length : {128U, 129U, 256U, ~0U}) {
        EXPECT_TRUE(full.masked(length) == full) << length;
    }
}

TEST(IpGenAddr, HashesAreWellSpread) {
    valuechecks::expectSpreadHashes(valuechecks::manyValues(
        [](unsigned number) { return IpGenAddr(IpAddr(0x0A000000 + number)); }));
    valuechecks::expectSpreadHashes(valuechecks::manyValues(
        [](unsigned number) { return IpGenAddr::ipv6(0x20010db800000000, number); }));
    valuechecks::expectSpreadHashes(
        valuechecks::manyValues([](unsigned number) { return IpGenAddr::ipv6(number, number); }));
}

TEST(IpGenAddr, HashesFamiliesDifferently) {
    std::hash<IpGenAddr> const hash;
    EXPECT_NE(hash(IpGenAddr()), hash(address("0.0.0.0")));
    EXPECT_NE(hash(IpGenAddr()), hash(address("::")));
    EXPECT_NE(hash(address("::")), hash(address("0.0.0.0")));
}
