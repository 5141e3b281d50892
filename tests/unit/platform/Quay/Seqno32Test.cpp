#include "Quay/Seqno32.h"

#include "tests/unit/platform/Nolt/ValueChecks.h"

#include <random>
#include <type_traits>

using Quay::Seqno32;
using Vex::U32;
using namespace std::string_view_literals;

static_assert(sizeof(Seqno32) == 4);
static_assert(std::is_trivially_copyable_v<Seqno32>);
static_assert(Seqno32().isZero());

TEST(Seqno32, IsZeroByDefault) {
    EXPECT_EQ(Seqno32().value(), 0U);
    EXPECT_TRUE(Seqno32().isZero());
    EXPECT_FALSE(Seqno32(1).isZero());
}

TEST(Seqno32, ReadsAndWritesDecimal) {
    valuechecks::expectText(Seqno32(), "0");
    valuechecks::expectText(Seqno32(7), "7");
    valuechecks::expectText(Seqno32(2147483648), "2147483648");
    valuechecks::expectText(Seqno32(4294967295), "4294967295");
}

TEST(Seqno32, RefusesEverythingElse) {
    valuechecks::expectRefused<Seqno32>({"", " ", "04294967296", "-1", "-0", "+1", "00", "01", " 1",
                                         "1 ", "1\n", "0x1", "1.0", "1e3", "x", "1\0"sv});
}

TEST(Seqno32, RefusesLargerNumbersAsOutOfRange) {
    valuechecks::expectRefused<Seqno32, Vex::RangeError>(
        {"4294967296", "4294967305", "42949672950", "18446744073709551617"});
}

TEST(Seqno32, SaysWhatIsAccepted) {
    try {
        Seqno32::fromString("-1");
        FAIL();
    } catch (Vex::ParseError const & error) {
        EXPECT_STREQ(error.what(), "'-1': expected a number from 0 to 4294967295");
    }
}

TEST(Seqno32, IsOrderedAsANumber) {
    valuechecks::expectAscending<Seqno32>({Seqno32(), Seqno32(1), Seqno32(9), Seqno32(10),
                                           Seqno32(2147483647), Seqno32(2147483648),
                                           Seqno32(4294967295)});
}

TEST(Seqno32, HashesAreWellSpread) {
    valuechecks::expectSpreadHashes(
        valuechecks::manyValues([](unsigned number) { return Seqno32(number); }));
}

TEST(Seqno32, IsReadBackFromItsText) {
    std::mt19937 random(32);
    for (int round = 0; round < 10000; ++round) {
        Seqno32 const number(static_cast<U32>(random()));
        valuechecks::expectText(number, std::to_string(number.value()));
    }
}
