#include "Vxlan/VniOrNone.h"

#include "tests/unit/platform/Nolt/ValueChecks.h"

#include <type_traits>

using Vex::U32;
using Vxlan::Vni;
using Vxlan::VniOrNone;

static_assert(sizeof(VniOrNone) == 4);
static_assert(std::is_trivially_copyable_v<VniOrNone>);
static_assert(std::is_convertible_v<Vni, VniOrNone>);
static_assert(!std::is_convertible_v<VniOrNone, Vni>);
static_assert(VniOrNone().isNone());

TEST(VniOrNone, IsNoneByDefault) {
    EXPECT_TRUE(VniOrNone().isNone());
    EXPECT_EQ(VniOrNone().value(), 0x1000000U);
    EXPECT_TRUE(VniOrNone(16777216) == VniOrNone());
    valuechecks::expectText(VniOrNone(), "");
    EXPECT_EQ(VniOrNone().stringValue(true), "");
}

TEST(VniOrNone, HoldsEveryVni) {
    for (U32 const number : {0U, 1U, 4098U, 0xFFFFFFU}) {
        VniOrNone const held = Vni(number);
        EXPECT_FALSE(held.isNone());
        EXPECT_EQ(held.value(), number);
        EXPECT_TRUE(held.vni() == Vni(number));
        EXPECT_TRUE(held == VniOrNone(number));
        valuechecks::expectText(held, Vni(number).stringValue());
        EXPECT_EQ(held.stringValue(true), Vni(number).stringValue(true));
    }
}

TEST(VniOrNone, KeepsALargerNumberAsNeitherNoneNorAVni) {
    for (U32 const number : {0x1000001U, 0x80000000U, 0xFFFFFFFFU}) {
        VniOrNone const held(number);
        EXPECT_FALSE(held.isNone());
        EXPECT_EQ(held.value(), number);
        EXPECT_THROW((void)held.vni(), Vex::RangeError);
        EXPECT_EQ(held.stringValue(), std::to_string(number));
        EXPECT_EQ(valuechecks::written(VniOrNone::maxTextLength,
                                       [&](char * out) { return held.writeTo(out, true); }),
                  std::to_string(number));
    }
    EXPECT_THROW((void)VniOrNone().vni(), Vex::RangeError);
}

TEST(VniOrNone, ComparesWithAVni) {
    EXPECT_TRUE(VniOrNone(10) == Vni(10));
    EXPECT_TRUE(Vni(10) == VniOrNone(10));
    EXPECT_TRUE(VniOrNone(10) != Vni(11));
    EXPECT_TRUE(VniOrNone() != Vni(0));
    EXPECT_TRUE(Vni(9) < VniOrNone(10));
    EXPECT_TRUE(VniOrNone() > Vni(0xFFFFFF));
}

TEST(VniOrNone, RefusesEverythingThatIsNotAVni) {
    valuechecks::expectRefused<VniOrNone>(
        {" ", "none", "-1", "01", "+1", "1 ", "0.16", "0.16.256", "0.16.2.0", "0.016.2"});
    valuechecks::expectRefused<VniOrNone, Vex::RangeError>({"16777216", "4294967295"});
}

TEST(VniOrNone, IsOrderedAsANumber) {
    valuechecks::expectAscending<VniOrNone>({VniOrNone(0), VniOrNone(9), VniOrNone(10),
                                             VniOrNone(0xFFFFFF), VniOrNone(), VniOrNone(0x1000001),
                                             VniOrNone(0xFFFFFFFF)});
}

TEST(VniOrNone, AsAFilterNoneMatchesEveryVniAndAVniItself) {
    for (Vni const vni : {Vni(0), Vni(10), Vni(0xFFFFFF)}) {
        EXPECT_TRUE(VniOrNone().matches(vni));
    }
    EXPECT_TRUE(VniOrNone(10).matches(Vni(10)));
    EXPECT_FALSE(VniOrNone(10).matches(Vni(11)));
    EXPECT_FALSE(VniOrNone(0).matches(Vni(10)));
    EXPECT_FALSE(VniOrNone(VniOrNone::none + 1).matches(Vni(1)));
}

TEST(VniOrNone, HashesAreWellSpread) {
    valuechecks::expectSpreadHashes(
        valuechecks::manyValues([](unsigned number) { return VniOrNone(number); }));
}
