#include "Nolt/IpGenPrefix.h"

#include "tests/unit/platform/Nolt/ValueChecks.h"

#include <random>

using Nolt::Family;
using Nolt::IpAddr;
using Nolt::IpGenAddr;
using Nolt::IpGenPrefix;
using Vex::U32;

static_assert(IpGenPrefix().isNone());
static_assert(IpGenPrefix(IpAddr(0x0A000000), 8).overlaps(IpGenPrefix(IpAddr(0x0A010000), 16)));

namespace {

IpGenPrefix prefix(std::string_view text) {
    return IpGenPrefix::fromString(text);
}

void expectMessage(std::string_view text, std::string_view message) {
    try {
        prefix(text);
        ADD_FAILURE() << "accepted: " << text;
    } catch (Vex::ParseError const & error) {
        EXPECT_EQ(error.what(), message);
    }
}

void expectOverlap(std::string_view left, std::string_view right, bool expected) {
    EXPECT_EQ(prefix(left).overlaps(prefix(right)), expected) << left << " and " << right;
    EXPECT_EQ(prefix(right).overlaps(prefix(left)), expected) << right << " and " << left;
}

IpGenAddr randomAddress(std::mt19937_64 & random) {
    auto const bits = random();
    if ((bits & 1) != 0) {
        return IpAddr(static_cast<U32>(bits >> 8));
    }
    return IpGenAddr::ipv6(bits, random());
}

} // namespace

TEST(IpGenPrefix, HasNoFamilyByDefault) {
    IpGenPrefix const none;
    EXPECT_TRUE(none.isNone());
    EXPECT_EQ(none.family(), Family::none);
    EXPECT_TRUE(none.address() == IpGenAddr());
    EXPECT_EQ(none.length(), 0U);
    EXPECT_FALSE(none == prefix("0.0.0.0/0"));
    EXPECT_FALSE(none == prefix("::/0"));
    valuechecks::expectText(none, "");
}

TEST(IpGenPrefix, ReadsAndWritesBothFamilies) {
    auto const network = prefix("10.1.2.0/24");
    EXPECT_TRUE(network.address() == IpAddr(0x0A010200));
    EXPECT_EQ(network.length(), 24U);
    EXPECT_EQ(network.family(), Family::ipv4);
    EXPECT_EQ(prefix("2001:DB8::/32").stringValue(), "2001:db8::/32");
    for (auto const * text :
         {"0.0.0.0/0", "128.0.0.0/1", "10.1.2.0/24", "255.255.255.254/31", "10.1.2.3/32", "::/0",
          "8000::/1", "2001:db8::/32", "2001:db8:0:8000::/49", "::ffff:10.1.2.0/120",
          "ffff:ffff:ffff:ffff:ffff:ffff:ffff:fffe/127",
          "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff/128"}) {
        valuechecks::expectText(prefix(text), text);
    }
}

TEST(IpGenPrefix, RefusesEverythingElse) {
    valuechecks::expectRefused<IpGenPrefix>({
        " ",           "/",
        "/0",          "10.0.0.0",
        "::",          "10.0.0.0/",
        "10.0.0.0/33", "::/129",
        "10.0.0.0/08", "10.0.0.0/+8",
        "10/8",        "10.0.0.0/8 ",
        " 10.0.0.0/8", "10.0.0.0/8/8",
        "0.0.0.1/0",   "10.0.0.1/8",
        "10.1.2.3/31", "2001:db8::1/64",
        "::1/127",     "8000::/0",
    });
}

TEST(IpGenPrefix, NamesThePrefixThatWasProbablyMeant) {
    expectMessage("10.1.2.3/24", "'10.1.2.3/24': expected 10.1.2.0/24, with no bits set beyond "
                                 "the prefix length");
    expectMessage("255.255.255.255/0", "'255.255.255.255/0': expected 0.0.0.0/0, with no bits set "
                                       "beyond the prefix length");
    expectMessage("2001:DB8::1/64", "'2001:DB8::1/64': expected 2001:db8::/64, with no bits set "
                                    "beyond the prefix length");
    expectMessage("10.1.2.3", "'10.1.2.3': expected a prefix such as 10.1.0.0/16 or "
                              "2001:db8::/32");
}

TEST(IpGenPrefix, RefusesAnAddressWithHostBits) {
    EXPECT_THROW(IpGenPrefix(IpAddr(0x0A010203), 33), Vex::RangeError);
    EXPECT_THROW(IpGenPrefix(IpGenAddr::ipv6(0, 0), 129), Vex::RangeError);
    EXPECT_THROW(IpGenPrefix(IpGenAddr(), 1), Vex::RangeError);
    try {
        IpGenPrefix const made(IpAddr(0x0A010203), 24);
        FAIL() << made.stringValue();
    } catch (Vex::RangeError const & error) {
        EXPECT_STREQ(error.what(),
                     "10.1.2.3/24 has bits set beyond its prefix length, unlike 10.1.2.0/24");
    }
}

TEST(IpGenPrefix, CoversAnAddress) {
    EXPECT_TRUE(IpGenPrefix::covering(IpAddr(0x0A010203), 24) == prefix("10.1.2.0/24"));
    EXPECT_TRUE(IpGenPrefix::covering(IpAddr(0x0A010203), 0) == prefix("0.0.0.0/0"));
    EXPECT_TRUE(IpGenPrefix::covering(IpGenAddr::fromString("2001:db8::1"), 64) ==
                prefix("2001:db8::/64"));
    EXPECT_TRUE(IpGenPrefix::covering(IpGenAddr(), 0) == IpGenPrefix());
    EXPECT_THROW(IpGenPrefix::covering(IpAddr(1), 33), Vex::RangeError);
    EXPECT_THROW(IpGenPrefix::covering(IpAddr(1), ~0U), Vex::RangeError);
}

TEST(IpGenPrefix, OverlapsInBothDirections) {
    expectOverlap("10.0.0.0/8", "10.1.0.0/16", true);
    expectOverlap("10.1.2.0/24", "10.0.0.0/8", true);
    expectOverlap("10.0.0.0/8", "10.0.0.0/8", true);
    expectOverlap("10.0.0.0/8", "10.0.0.0/9", true);
    expectOverlap("10.1.2.3/32", "10.1.2.3/32", true);
    expectOverlap("10.1.2.3/32", "10.1.2.2/31", true);
    expectOverlap("10.0.0.0/8", "11.0.0.0/8", false);
    expectOverlap("10.0.0.0/9", "10.128.0.0/9", false);
    expectOverlap("10.1.2.3/32", "10.1.2.2/32", false);
    expectOverlap("0.0.0.0/1", "128.0.0.0/1", false);
    expectOverlap("2001:db8::/32", "2001:db8:1::/48", true);
    expectOverlap("2001:db8::/64", "2001:db8::1/128", true);
    expectOverlap("2001:db8::/64", "2001:db8:0:0:8000::/65", true);
    expectOverlap("2001:db8::/65", "2001:db8:0:0:8000::/65", false);
    expectOverlap("2001:db8::/64", "2001:db8:0:1::/64", false);
    expectOverlap("2001:db8::1/128", "2001:db8::/128", false);
    expectOverlap("2001:db8::/32", "2001:db9::/32", false);
}

TEST(IpGenPrefix, OfLengthZeroOverlapsItsWholeFamilyAndNoOther) {
    for (auto const * text : {"0.0.0.0/0", "10.0.0.0/8", "128.0.0.0/1", "255.255.255.255/32"}) {
        expectOverlap("0.0.0.0/0", text, true);
        expectOverlap("::/0", text, false);
    }
    for (auto const * text : {"::/0", "::/128", "::ffff:0.0.0.0/96", "2001:db8::/32",
                              "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff/128"}) {
        expectOverlap("0.0.0.0/0", text, false);
        expectOverlap("::/0", text, true);
    }
}

TEST(IpGenPrefix, OfNoFamilyOverlapsNothing) {
    EXPECT_FALSE(IpGenPrefix().overlaps(IpGenPrefix()));
    for (auto const * text : {"0.0.0.0/0", "::/0"}) {
        EXPECT_FALSE(IpGenPrefix().overlaps(prefix(text))) << text;
        EXPECT_FALSE(prefix(text).overlaps(IpGenPrefix())) << text;
    }
}

TEST(IpGenPrefix, OverlapsExactlyThePrefixesWithTheSameBits) {
    std::mt19937_64 random(9);
    for (int round = 0; round < 2000; ++round) {
        auto const address = randomAddress(random);
        unsigned const bits = address.bitLength();
        auto const shorter = static_cast<unsigned>(random() % bits) + 1;
        auto const longer = shorter + static_cast<unsigned>(random() % (bits - shorter + 1));
        auto const inner = IpGenPrefix::covering(address, longer);
        EXPECT_TRUE(inner.overlaps(IpGenPrefix::covering(address, shorter)));
        EXPECT_TRUE(IpGenPrefix::covering(address, shorter).overlaps(inner));

        // The same address except for the last bit of the shorter prefix.
        auto const place = bits - shorter;
        IpGenAddr const other =
            bits == 32 ? IpGenAddr(IpAddr(address.ipv4().value() ^ U32{1} << place))
            : place < 64
                ? IpGenAddr::ipv6(address.high(), address.low() ^ Vex::U64{1} << place)
                : IpGenAddr::ipv6(address.high() ^ Vex::U64{1} << (place - 64), address.low());
        EXPECT_FALSE(inner.overlaps(IpGenPrefix::covering(other, shorter)));
        EXPECT_FALSE(IpGenPrefix::covering(other, shorter).overlaps(inner));
    }
}

TEST(IpGenPrefix, IsOrderedByAddressThenByLength) {
    valuechecks::expectAscending<IpGenPrefix>({
        IpGenPrefix(),
        prefix("0.0.0.0/0"),
        prefix("0.0.0.0/8"),
        prefix("9.0.0.0/8"),
        prefix("10.0.0.0/8"),
        prefix("10.0.0.0/24"),
        prefix("10.0.1.0/24"),
        prefix("128.0.0.0/1"),
        prefix("::/0"),
        prefix("::/128"),
        prefix("2001:db8::/32"),
        prefix("2001:db8::/64"),
        prefix("2001:db9::/32"),
    });
}

TEST(IpGenPrefix, HashesAreWellSpread) {
    valuechecks::expectSpreadHashes(valuechecks::manyValues(
        [](unsigned number) { return IpGenPrefix(IpAddr(number << 16), 16); }));
}

TEST(IpGenPrefix, HashesLengthsDifferently) {
    std::unordered_set<std::size_t> hashes;
    for (unsigned length = 0; length <= 128; ++length) {
        hashes.insert(std::hash<IpGenPrefix>()(IpGenPrefix(IpGenAddr::ipv6(0, 0), length)));
    }
    EXPECT_EQ(hashes.size(), 129U);
}

TEST(IpGenPrefix, IsReadBackFromItsText) {
    std::mt19937_64 random(16);
    for (int round = 0; round < 10000; ++round) {
        auto const address = randomAddress(random);
        auto const made = IpGenPrefix::covering(
            address, static_cast<unsigned>(random() % (address.bitLength() + 1)));
        valuechecks::expectText(made, made.stringValue());
    }
}
