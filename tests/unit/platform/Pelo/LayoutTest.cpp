#include "Pelo/Layout.h"

#include "tests/unit/platform/Pelo/TestTables.h"

#include <gtest/gtest.h>

namespace Pelo {
namespace {

using Test::errorOf;
using Test::PairSchema;

constexpr Format format = formatOf<PairSchema>;
constexpr U64 capacity = 20;

U64 check(FixedHeader const & header, U64 size = regionSize(format, capacity)) {
    return checkHeader(header, format, size, "t");
}

TEST(Layout, ASlotHasAChecksumAndWholeWordsForTheRest) {
    EXPECT_EQ((Format{"", 9, 8}.slotSize()), 32U);
    EXPECT_EQ((Format{"", 7, 1}.slotSize()), 24U);
    EXPECT_EQ((Format{"", 4, 3}.slotSize()), 16U);
    EXPECT_EQ((Format{"", 1, 0}.slotSize()), 16U);
    EXPECT_EQ(format.slotSize(), 32U);
    EXPECT_EQ(regionSize(format, capacity), 192U + 20 * 32);
}

TEST(Layout, AHeaderIsReadBack) {
    EXPECT_EQ(check(makeHeader(format, capacity)), capacity);
}

TEST(Layout, TheHeaderStartsWithAReadableWord) {
    auto const header = makeHeader(format, capacity);
    EXPECT_EQ(std::string_view(reinterpret_cast<char const *>(header.data()), 8), "PeloTabl");
}

TEST(Layout, AnotherMagicNumberIsRefused) {
    auto header = makeHeader(format, capacity);
    header[0] = __builtin_bswap64(header[0]);
    EXPECT_EQ(errorOf<TableError>([&] { check(header); }),
              "table 't': is no table: starts with 0x50656c6f5461626c, expected "
              "0x6c6261546f6c6550");
}

TEST(Layout, AnotherVersionIsRefusedBeforeItsChecksumIsChecked) {
    auto header = makeHeader(format, capacity);
    header[1] = 1;
    EXPECT_EQ(errorOf<TableError>([&] { check(header); }),
              "table 't': has format version 1, expected 2");
}

TEST(Layout, AnotherTagIsRefusedByName) {
    auto const header = makeHeader({"Pelo::Test::Other", 4, 16}, capacity);
    EXPECT_EQ(errorOf<TableError>([&] { check(header); }),
              "table 't': holds 'Pelo::Test::Other', expected 'Pelo::Test::Pair'");
}

TEST(Layout, ATagOfFullLengthHasNoTerminatorAndIsReadCompletely) {
    std::string const tag(Format::maxTagLength, 'x');
    Format const full{tag, 4, 16};
    auto const header = makeHeader(full, capacity);
    EXPECT_EQ(checkHeader(header, full, regionSize(full, capacity), "t"), capacity);
    EXPECT_EQ(errorOf<TableError>([&] { check(header); }),
              "table 't': holds '" + std::string(60, 'x') + "'..., expected 'Pelo::Test::Pair'");
}

TEST(Layout, OtherSizesOfKeyOrValueAreRefused) {
    EXPECT_EQ(
        errorOf<TableError>([&] {
            check(makeHeader({format.tag, 4, 17}, capacity));
        }),
        "table 't': has keys of 4, values of 17 and slots of 32 bytes, expected keys of 4, values "
        "of 16 and slots of 32 bytes");
    EXPECT_THROW(check(makeHeader({format.tag, 5, 15}, capacity)), TableError);
}

TEST(Layout, AnImpossibleCapacityIsRefusedEvenWithARightChecksum) {
    EXPECT_EQ(errorOf<CorruptionDetectedException>(
                  [&] { check(makeHeader(format, 0), regionSize(format, 0)); }),
              "table 't', header: 0 slots, expected 1 to 4294967295");
    EXPECT_THROW(check(makeHeader(format, maxCapacity), regionSize(format, maxCapacity)),
                 CorruptionDetectedException);
    // So many slots that their size in bytes would wrap around to the size of the file.
    U64 const wrapping = capacity + (U64{1} << 59);
    ASSERT_EQ(regionSize(format, wrapping), regionSize(format, capacity));
    EXPECT_THROW(check(makeHeader(format, wrapping)), CorruptionDetectedException);
}

TEST(Layout, TheSeedIsReadBack) {
    EXPECT_EQ(seedOf(makeHeader(format, capacity, 77)), 77U);
    EXPECT_EQ(check(makeHeader(format, capacity, 77)), capacity);
}

TEST(Layout, ASeedThatWasNeverDrawnIsRefusedEvenWithARightChecksum) {
    EXPECT_EQ(errorOf<CorruptionDetectedException>([] { check(makeHeader(format, capacity, 0)); }),
              "table 't', header: a seed of 0, expected a seed that was drawn");
}

TEST(Layout, EachNewHeaderHasAnotherSeed) {
    EXPECT_NE(seedOf(makeHeader(format, capacity)), seedOf(makeHeader(format, capacity)));
}

TEST(Layout, AFileOfAnyOtherLengthIsRefused) {
    auto const header = makeHeader(format, capacity);
    EXPECT_EQ(errorOf<CorruptionDetectedException>([&] { check(header, 831); }),
              "table 't', header: 831 bytes for 20 slots, expected 832");
    EXPECT_THROW(check(header, 833), CorruptionDetectedException);
}

TEST(Layout, AHeaderWithOneWrongBitIsNeverAccepted) {
    for (std::size_t bit = 0; bit < fixedWords * 64; ++bit) {
        auto header = makeHeader(format, capacity);
        header[bit / 64] ^= U64{1} << (bit % 64);
        EXPECT_THROW(check(header), Vex::Error) << bit;
    }
}

TEST(Layout, CountsAreReadBack) {
    for (Counts const counts : {Counts{}, Counts{3, 4, false}, Counts{3, 4, true}}) {
        EXPECT_EQ(checkCounts(makeCounts(counts), capacity, "t"), counts);
    }
}

TEST(Layout, CountsWithOneWrongBitAreNeverAccepted) {
    for (std::size_t bit = 0; bit < countsWords * 64; ++bit) {
        auto words = makeCounts({3, 4, false});
        words[bit / 64] ^= U64{1} << (bit % 64);
        EXPECT_THROW(checkCounts(words, capacity, "t"), CorruptionDetectedException) << bit;
    }
}

TEST(Layout, CountsLeaveAtLeastOneSlotEmpty) {
    EXPECT_NO_THROW(checkCounts(makeCounts({10, 9, false}), capacity, "t"));
    EXPECT_EQ(errorOf<CorruptionDetectedException>([] {
                  checkCounts(makeCounts({10, 10, false}), capacity, "t");
              }),
              "table 't', counts: 20 slots in use, expected fewer than 20");
    EXPECT_THROW(checkCounts(makeCounts({1, ~U64{0}, false}), capacity, "t"),
                 CorruptionDetectedException);
}

} // namespace
} // namespace Pelo
