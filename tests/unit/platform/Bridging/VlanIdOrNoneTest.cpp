#include "Bridging/VlanIdOrNone.h"

#include "tests/unit/platform/Nolt/ValueChecks.h"

#include <type_traits>

using Bridging::VlanIdOrNone;
using Vex::U16;
using namespace std::string_view_literals;

static_assert(sizeof(VlanIdOrNone) == 2);
static_assert(std::is_trivially_copyable_v<VlanIdOrNone>);
static_assert(VlanIdOrNone().isNone());

TEST(VlanIdOrNone, IsNoneByDefault) {
    EXPECT_EQ(VlanIdOrNone().value(), 0);
    EXPECT_TRUE(VlanIdOrNone().isNone());
    EXPECT_TRUE(VlanIdOrNone(0).isNone());
    EXPECT_FALSE(VlanIdOrNone(1).isNone());
}

TEST(VlanIdOrNone, ReadsAndWritesEveryNumber) {
    for (unsigned number = 0; number <= 65535; ++number) {
        valuechecks::expectText(VlanIdOrNone(static_cast<U16>(number)), std::to_string(number));
    }
}

TEST(VlanIdOrNone, RefusesEverythingElse) {
    valuechecks::expectRefused<VlanIdOrNone>({"", " ", "065536", "-1", "-0", "+1", "00", "01", " 1",
                                              "1 ", "1\n", "0x1", "1.0", "none", "1-2", "10\0"sv});
}

TEST(VlanIdOrNone, RefusesLargerNumbersAsOutOfRange) {
    valuechecks::expectRefused<VlanIdOrNone, Vex::RangeError>({"65536", "65546", "4294967296"});
}

TEST(VlanIdOrNone, SaysWhatIsAccepted) {
    try {
        VlanIdOrNone::fromString("x");
        FAIL();
    } catch (Vex::ParseError const & error) {
        EXPECT_STREQ(error.what(), "'x': expected a VLAN number from 0 to 65535, 0 for none");
    }
}

TEST(VlanIdOrNone, IsOrderedAsANumber) {
    valuechecks::expectAscending<VlanIdOrNone>({VlanIdOrNone(), VlanIdOrNone(1), VlanIdOrNone(9),
                                                VlanIdOrNone(10), VlanIdOrNone(4094),
                                                VlanIdOrNone(32768), VlanIdOrNone(65535)});
}

TEST(VlanIdOrNone, HashesAreWellSpread) {
    valuechecks::expectSpreadHashes(valuechecks::manyValues(
        [](unsigned number) { return VlanIdOrNone(static_cast<U16>(number)); }));
}
