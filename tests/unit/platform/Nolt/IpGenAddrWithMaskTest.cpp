#include "Nolt/IpGenAddrWithMask.h"

#include "tests/unit/platform/Nolt/ValueChecks.h"

#include <random>

using Nolt::Family;
using Nolt::IpAddr;
using Nolt::IpGenAddr;
using Nolt::IpGenAddrWithMask;
using Vex::U32;

static_assert(IpGenAddrWithMask().isNone());
static_assert(IpGenAddrWithMask(IpAddr(1), 32).length() == 32);

namespace {

IpGenAddrWithMask value(std::string_view text) {
    return IpGenAddrWithMask::fromString(text);
}

void expectRange(IpGenAddr address, unsigned length, std::string_view message) {
    try {
        IpGenAddrWithMask const made(address, length);
        ADD_FAILURE() << "accepted: " << made.stringValue();
    } catch (Vex::RangeError const & error) {
        EXPECT_EQ(error.what(), message);
    }
}

} // namespace

TEST(IpGenAddrWithMask, IsEmptyByDefault) {
    IpGenAddrWithMask const none;
    EXPECT_TRUE(none.isNone());
    EXPECT_EQ(none.family(), Family::none);
    EXPECT_TRUE(none.address() == IpGenAddr());
    EXPECT_EQ(none.length(), 0U);
    EXPECT_TRUE(none == IpGenAddrWithMask(IpGenAddr(), 0));
    valuechecks::expectText(none, "");
}

TEST(IpGenAddrWithMask, KeepsTheHostBits) {
    auto const port = value("10.1.2.3/24");
    EXPECT_TRUE(port.address() == IpAddr(0x0A010203));
    EXPECT_EQ(port.length(), 24U);
    EXPECT_EQ(port.family(), Family::ipv4);
    valuechecks::expectText(port, "10.1.2.3/24");
    valuechecks::expectText(value("2001:DB8::0001/64"), "2001:db8::1/64");
}

TEST(IpGenAddrWithMask, ReadsAndWritesTheExtremes) {
    for (auto const * text :
         {"0.0.0.0/0", "0.0.0.0/32", "255.255.255.255/0", "255.255.255.255/32", "::/0", "::/128",
          "::ffff:255.255.255.255/128", "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff/0",
          "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff/128"}) {
        valuechecks::expectText(value(text), text);
    }
}

TEST(IpGenAddrWithMask, RefusesEverythingElse) {
    valuechecks::expectRefused<IpGenAddrWithMask>({
        " ",
        "/",
        "/0",
        "/24",
        "10.0.0.1",
        "::1",
        "10.0.0.1/",
        "10.0.0.1/33",
        "10.0.0.1/128",
        "10.0.0.1/256",
        "10.0.0.1/4294967320",
        "::1/129",
        "10.0.0.1/024",
        "10.0.0.1/00",
        "10.0.0.1/+24",
        "10.0.0.1/-1",
        "10.0.0.1/ 24",
        "10.0.0.1 /24",
        "10.0.0.1/24 ",
        " 10.0.0.1/24",
        "10.0.0.1/24/24",
        "10.0.0.1//24",
        "10.0.0.1/255.255.255.0",
        "10.0.0.1/0x18",
        "10.0.0/24",
        "10.0.0.256/24",
        "10.0.0.1,24",
        "::1%eth0/64",
        "[::1]/64",
        "x/24",
    });
}

TEST(IpGenAddrWithMask, SaysWhatIsAccepted) {
    try {
        value("10.1.2.3");
        FAIL();
    } catch (Vex::ParseError const & error) {
        EXPECT_STREQ(error.what(), "'10.1.2.3': expected an address with its prefix length such "
                                   "as 10.1.2.3/24 or 2001:db8::1/64");
    }
}

TEST(IpGenAddrWithMask, RefusesALengthAboveTheFamilysBits) {
    expectRange(IpAddr(0x0A000001), 33, "prefix length 33 of '10.0.0.1' is above 32");
    expectRange(IpAddr(0x0A000001), 256 + 24, "prefix length 280 of '10.0.0.1' is above 32");
    expectRange(IpGenAddr::ipv6(0, 1), 129, "prefix length 129 of '::1' is above 128");
    expectRange(IpGenAddr(), 1, "prefix length 1 of '' is above 0");
}

TEST(IpGenAddrWithMask, IsOrderedByAddressThenByLength) {
    valuechecks::expectAscending<IpGenAddrWithMask>({
        IpGenAddrWithMask(),
        value("0.0.0.0/0"),
        value("0.0.0.0/32"),
        value("9.0.0.0/32"),
        value("10.0.0.0/8"),
        value("10.0.0.0/24"),
        value("10.0.0.1/8"),
        value("128.0.0.0/1"),
        value("::/0"),
        value("::/128"),
        value("::1/0"),
        value("2001:db8::/32"),
        value("ffff::/16"),
    });
}

TEST(IpGenAddrWithMask, HashesAreWellSpread) {
    valuechecks::expectSpreadHashes(valuechecks::manyValues([](unsigned number) {
        return IpGenAddrWithMask(IpAddr(0x0A000000 + (number >> 5)), number & 31);
    }));
}

TEST(IpGenAddrWithMask, IsReadBackFromItsText) {
    std::mt19937_64 random(24);
    for (int round = 0; round < 10000; ++round) {
        auto const bits = random();
        IpGenAddr const address = (bits & 1) != 0 ? IpGenAddr(IpAddr(static_cast<U32>(bits >> 8)))
                                                  : IpGenAddr::ipv6(random(), random() << 40);
        IpGenAddrWithMask const made(address,
                                     static_cast<unsigned>(random() % (address.bitLength() + 1)));
        valuechecks::expectText(made, made.stringValue());
    }
}
