#include "Nolt/IpAddr.h"

#include "tests/unit/platform/Nolt/ValueChecks.h"

#include <random>
#include <type_traits>

using Nolt::IpAddr;
using Vex::U32;
using namespace std::string_view_literals;

static_assert(sizeof(IpAddr) == 4);
static_assert(std::is_trivially_copyable_v<IpAddr>);
static_assert(!std::is_convertible_v<U32, IpAddr>);
static_assert(IpAddr().isZero());

TEST(IpAddr, IsZeroByDefault) {
    EXPECT_EQ(IpAddr().value(), 0U);
    EXPECT_TRUE(IpAddr().isZero());
    EXPECT_FALSE(IpAddr(1).isZero());
}

TEST(IpAddr, ReadsAndWritesDottedQuads) {
    valuechecks::expectText(IpAddr(), "0.0.0.0");
    valuechecks::expectText(IpAddr(0x0A000001), "10.0.0.1");
    valuechecks::expectText(IpAddr(0x01020304), "1.2.3.4");
    valuechecks::expectText(IpAddr(0x0A636409), "10.99.100.9");
    valuechecks::expectText(IpAddr(0xFFFFFFFF), "255.255.255.255");
    valuechecks::expectText(IpAddr(0xFF000000), "255.0.0.0");
    valuechecks::expectText(IpAddr(0x000000FF), "0.0.0.255");
}

TEST(IpAddr, ReadsAndWritesEveryOctetInEveryPlace) {
    for (U32 octet = 0; octet < 256; ++octet) {
        auto const text = std::to_string(octet);
        valuechecks::expectText(IpAddr(octet << 24), text + ".0.0.0");
        valuechecks::expectText(IpAddr(octet << 16), "0." + text + ".0.0");
        valuechecks::expectText(IpAddr(octet << 8), "0.0." + text + ".0");
        valuechecks::expectText(IpAddr(octet), "0.0.0." + text);
    }
}

TEST(IpAddr, IsReadFromTheStartOfALongerText) {
    for (std::string const quad : {"0.0.0.0", "10.0.0.1", "255.255.255.255"}) {
        for (std::string const suffix : {"\"", ".5\"", "/24\"", " \"", "\\"}) {
            auto const text = quad + suffix;
            IpAddr address;
            EXPECT_EQ(IpAddr::readFrom(text.c_str(), address), text.c_str() + quad.size()) << text;
            EXPECT_EQ(address, IpAddr::fromString(quad)) << text;
        }
    }
}

TEST(IpAddr, RefusesANullText) {
    EXPECT_EQ(IpAddr::tryFromString(std::string_view()), std::nullopt);
}

TEST(IpAddr, ATextThatDoesNotStartWithAQuadChangesNothing) {
    for (auto const * text : {"", "\"", "1\"", "1.2.3\"", "1.2.3.\"", "1..2.3\"", "01.2.3.4\"",
                              "1.2.3.256\"", "1.2.3.04\"", "99999999999.1.1.1\"", "a.b.c.d\""}) {
        IpAddr address(7);
        EXPECT_EQ(IpAddr::readFrom(text, address), nullptr) << text;
        EXPECT_EQ(address, IpAddr(7)) << text;
    }
}

TEST(IpAddr, RefusesEverythingElse) {
    valuechecks::expectRefused<IpAddr>({
        "",
        ".",
        "...",
        "1",
        "1.2",
        "1.2.3",
        "1.2.3.",
        ".1.2.3.4",
        "1.2.3.4.",
        "1.2.3.4.5",
        "1..2.3",
        "1.2..4",
        "256.0.0.0",
        "0.256.0.0",
        "0.0.256.0",
        "0.0.0.256",
        "0.0.0.999",
        "0.0.0.1000",
        "0.0.0.4294967296",
        "01.2.3.4",
        "1.02.3.4",
        "1.2.3.04",
        "1.2.3.00",
        "1.2.3.000",
        "1.2.3.0x4",
        "0x01020304",
        "16909060",
        "+1.2.3.4",
        "1.2.3.-4",
        " 1.2.3.4",
        "1.2.3.4 ",
        "1. 2.3.4",
        "1.2.3.4\n",
        "1.2.3.4/32",
        "1,2,3,4",
        "1:2:3:4",
        "1.2.3.a",
        "::1.2.3.4",
        "1.2.3.4\0"sv,
    });
}

TEST(IpAddr, SaysWhatIsAccepted) {
    try {
        IpAddr::fromString("10.0.0.01");
        FAIL();
    } catch (Vex::ParseError const & error) {
        EXPECT_STREQ(error.what(), "'10.0.0.01': expected an IPv4 address such as 10.0.0.1");
    }
}

TEST(IpAddr, IsOrderedAsAnUnsignedNumber) {
    valuechecks::expectAscending<IpAddr>({
        IpAddr::fromString("0.0.0.0"),
        IpAddr::fromString("0.0.0.1"),
        IpAddr::fromString("9.255.255.255"),
        IpAddr::fromString("10.0.0.2"),
        IpAddr::fromString("10.0.0.10"),
        IpAddr::fromString("127.255.255.255"),
        IpAddr::fromString("128.0.0.0"),
        IpAddr::fromString("255.255.255.255"),
    });
}

TEST(IpAddr, HashesAreWellSpread) {
    valuechecks::expectSpreadHashes(
        valuechecks::manyValues([](unsigned number) { return IpAddr(0x0A000000 + number); }));
    valuechecks::expectSpreadHashes(
        valuechecks::manyValues([](unsigned number) { return IpAddr(number << 16); }));
}

TEST(IpAddr, IsReadBackFromItsText) {
    std::mt19937 random(32);
    for (int round = 0; round < 20000; ++round) {
        IpAddr const address(static_cast<U32>(random()));
        valuechecks::expectText(address, address.stringValue());
    }
}
