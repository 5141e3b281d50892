#include "Vxlan/Vni.h"

#include "tests/unit/platform/Nolt/ValueChecks.h"

#include <random>
#include <type_traits>

using Vex::U32;
using Vxlan::Vni;
using namespace std::string_view_literals;

static_assert(sizeof(Vni) == 4);
static_assert(std::is_trivially_copyable_v<Vni>);
static_assert(!std::is_convertible_v<U32, Vni>);
static_assert(Vni(0xFFFFFF).value() == Vni::max);

namespace {

void expectDotted(Vni vni, std::string_view text) {
    EXPECT_EQ(vni.stringValue(true), text);
    EXPECT_EQ(valuechecks::written(Vni::maxTextLength,
                                   [&](char * out) { return vni.writeTo(out, true); }),
              text);
    EXPECT_TRUE(Vni::tryFromString(text) == vni) << text;
    EXPECT_TRUE(Vni::fromString(text) == vni) << text;
}

} // namespace

TEST(Vni, IsZeroByDefault) {
    EXPECT_EQ(Vni().value(), 0U);
}

TEST(Vni, RefusesNumbersAboveTwentyFourBits) {
    EXPECT_NO_THROW(Vni(16777215));
    for (U32 const number : {16777216U, 16777217U, 0x80000000U, 0xFFFFFFFFU}) {
        try {
            Vni const vni(number);
            ADD_FAILURE() << "accepted: " << vni.value();
        } catch (Vex::RangeError const & error) {
            EXPECT_STREQ(error.what(), "Vni::value < Vni::min or > Vni::max not allowed");
        }
    }
}

TEST(Vni, ReadsAndWritesDecimal) {
    valuechecks::expectText(Vni(), "0");
    valuechecks::expectText(Vni(9), "9");
    valuechecks::expectText(Vni(4098), "4098");
    valuechecks::expectText(Vni(16777215), "16777215");
    EXPECT_EQ(Vni(4098).stringValue(false), "4098");
}

TEST(Vni, ReadsAndWritesThreeBytesWithDots) {
    expectDotted(Vni(), "0.0.0");
    expectDotted(Vni(10), "0.0.10");
    expectDotted(Vni(4098), "0.16.2");
    expectDotted(Vni(0x010203), "1.2.3");
    expectDotted(Vni(0xFF0000), "255.0.0");
    expectDotted(Vni(0xFFFFFF), "255.255.255");
}

TEST(Vni, RefusesEverythingElse) {
    valuechecks::expectRefused<Vni>({
        "",        " ",       "+1",      "-1",      "-0",      "01",      "00",      "1 ",
        " 1",      "1\n",     "0x10",    "1e3",     "ten",     ".",       "..",      "...",
        "0.",      "0.16",    ".16.2",   "0..2",    "0.16.",   "0.16.2.", ".0.16.2", "0.16.2.1",
        "0.0.256", "0.256.0", "256.0.0", "00.16.2", "0.016.2", "0.16.02", "+0.16.2", "0.-16.2",
        "0. 16.2", "0.16.2 ", "0.16.x",  "0,16,2",  "0:16:2",  "10\0"sv,
    });
}

TEST(Vni, RaisesARangeErrorForADecimalNumberThatIsTooGreat) {
    valuechecks::expectRefused<Vni, Vex::RangeError>(
        {"16777216", "4294967296", "4294967306", "99999999999999999999"});
}

TEST(Vni, SaysWhatIsAccepted) {
    try {
        Vni::fromString("16777216");
        FAIL();
    } catch (Vex::RangeError const & error) {
        EXPECT_STREQ(error.what(), "'16777216': expected a VNI from 0 to 16777215, decimal or "
                                   "dotted such as 0.16.2");
    }
}

TEST(Vni, IsOrderedAsANumber) {
    valuechecks::expectAscending<Vni>(
        {Vni(), Vni(1), Vni(9), Vni(10), Vni(4096), Vni(65536), Vni(16777215)});
}

TEST(Vni, HashesAreWellSpread) {
    valuechecks::expectSpreadHashes(
        valuechecks::manyValues([](unsigned number) { return Vni(number); }));
    valuechecks::expectSpreadHashes(
        valuechecks::manyValues([](unsigned number) { return Vni(number << 8); }));
}

TEST(Vni, IsReadBackFromBothForms) {
    std::mt19937 random(24);
    for (int round = 0; round < 10000; ++round) {
        Vni const vni(static_cast<U32>(random()) & Vni::max);
        valuechecks::expectText(vni, std::to_string(vni.value()));
        expectDotted(vni, vni.stringValue(true));
    }
}
