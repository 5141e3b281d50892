#include "Pelo/Checksum.h"

#include <array>
#include <gtest/gtest.h>
#include <set>

namespace Pelo {
namespace {

// Computed independently of this code, so that each build can read the tables of earlier
// ones.
TEST(Checksum, KeepsItsValues) {
    std::array<U64, 3> const words{1, 2, 3};
    EXPECT_EQ(checksum(0, std::span(words).first(1)), 0xe99ff867dbf682c9U);
    EXPECT_EQ(checksum(1, std::span(words).first(1)), 0xbfc846100bfc1e42U);
    EXPECT_EQ(checksum(7, words), 0x476c7ca7baa8ff36U);
}

TEST(Checksum, EveryChangeOfOneByteChangesIt) {
    std::array<U64, 4> const good{0, 0x0123456789abcdef, ~U64{0}, 42};
    for (std::size_t word = 0; word < good.size(); ++word) {
        for (unsigned byte = 0; byte < 8; ++byte) {
            for (U64 change = 1; change < 256; ++change) {
                auto bad = good;
                bad[word] ^= change << (8 * byte);
                ASSERT_NE(checksum(5, bad), checksum(5, good)) << word << ' ' << byte;
            }
        }
    }
}

// All of these checksums differ, so flipping up to four bits never goes undetected.
TEST(Checksum, EveryPairOfFlippedBitsGivesADifferentChecksum) {
    std::array<U64, 3> const good{0, 17, 0x5555555555555555};
    std::set<U64> sums;
    std::size_t variants = 0;
    for (unsigned first = 0; first < 192; ++first) {
        for (unsigned second = first; second < 192; ++second) {
            auto bad = good;
            bad[first / 64] ^= U64{1} << (first % 64);
            bad[second / 64] ^= first == second ? 0 : U64{1} << (second % 64);
            sums.insert(checksum(0, bad));
            ++variants;
        }
    }
    EXPECT_EQ(sums.size(), variants);
    EXPECT_FALSE(sums.contains(checksum(0, good)));
}

TEST(Checksum, DependsOnTheOrderOfWordsAndTheSeed) {
    std::array<U64, 2> const words{1, 2};
    std::array<U64, 2> const swapped{2, 1};
    EXPECT_NE(checksum(0, words), checksum(0, swapped));
    EXPECT_NE(checksum(0, words), checksum(1, words));
}

TEST(Checksum, DependsOnTheNumberOfZeroWords) {
    std::array<U64, 3> const zeros{};
    EXPECT_NE(checksum(0, std::span(zeros).first(1)), checksum(3, std::span(zeros).first(2)));
    EXPECT_NE(checksum(1, std::span(zeros).first(2)), checksum(1, std::span(zeros).first(3)));
}

} // namespace
} // namespace Pelo
