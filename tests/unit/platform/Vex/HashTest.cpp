#include "Vex/Hash.h"

#include <gtest/gtest.h>

#include <bit>

using Vex::hashMix;
using Vex::U64;

static_assert(hashMix(1) != 1);

TEST(HashMix, ReproducesThePublishedSequence) {
    // The first outputs of SplitMix64 with seed 0: this finaliser applied to the
    // multiples of the golden ratio.
    constexpr U64 golden = 0x9e3779b97f4a7c15U;
    EXPECT_EQ(hashMix(golden), 0xe220a8397b1dcdafU);
    EXPECT_EQ(hashMix(golden * 2), 0x6e789e6aa1b965f4U);
    EXPECT_EQ(hashMix(golden * 3), 0x06c45d188009454fU);
}

TEST(HashMix, ChangesAboutHalfOfAllBitsWithAnyOneBit) {
    for (unsigned bit = 0; bit < 64; ++bit) {
        int changed = 0;
        for (U64 number = 1; number <= 1000; ++number) {
            changed += std::popcount(hashMix(number) ^ hashMix(number ^ U64{1} << bit));
        }
        EXPECT_GT(changed, 31000) << bit;
        EXPECT_LT(changed, 33000) << bit;
    }
}
