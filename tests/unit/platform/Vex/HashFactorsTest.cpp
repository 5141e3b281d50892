#include "Vex/HashFactors.h"

#include "tests/unit/platform/Vex/ChosenKeys.h"

#include <gtest/gtest.h>

#include <bit>
#include <set>

namespace {

using Vex::U64;
using Factors = Vex::HashFactors<2>;

constexpr std::size_t keyCount = 4096;

/// The places of a table that linear probing looks at until every key has its own.
template <class FirstPlace>
std::size_t probes(ChosenKeys::Keys const & keys, std::size_t places, FirstPlace && firstPlace) {
    std::vector<bool> taken(places);
    std::size_t looked = 0;
    for (U64 const key : keys) {
        std::size_t place = firstPlace(key);
        for (++looked; taken[place]; ++looked) {
            place = place + 1 == places ? 0 : place + 1;
        }
        taken[place] = true;
    }
    return looked;
}

/// The entries that a table of chains compares until every key is in its chain.
template <class Chain>
std::size_t compared(ChosenKeys::Keys const & keys, std::size_t chains, Chain && chain) {
    std::vector<std::size_t> lengths(chains);
    std::size_t steps = 0;
    for (U64 const key : keys) {
        steps += ++lengths[chain(key)];
    }
    return steps;
}

std::size_t lowBits(U64 hash) {
    return hash & (2 * keyCount - 1);
}

std::size_t topBits(U64 hash) {
    return hash >> (64 - std::countr_zero(keyCount));
}

} // namespace

TEST(HashFactors, NoSetOfKeysIsHardForMoreThanAFewFactors) {
    for (auto const & [how, keys] : ChosenKeys::allSets(keyCount)) {
        for (U64 seed = 1; seed <= 20; ++seed) {
            SCOPED_TRACE(how + ", seed " + std::to_string(seed));
            auto const factors = Factors::fromSeed(seed);
            auto const hash = [&](U64 key) { return factors.hash(std::array{key}); };
            // Random places cost 1.5 probes at this load, and 1.5 steps in chains.
            EXPECT_LT(probes(keys, 2 * keyCount, [&](U64 key) { return lowBits(hash(key)); }),
                      2 * keyCount);
            EXPECT_LT(probes(keys, 2 * keyCount,
                             [&](U64 key) { return (hash(key) >> 32) * 2 * keyCount >> 32; }),
                      2 * keyCount);
            EXPECT_LT(compared(keys, keyCount, [&](U64 key) { return topBits(hash(key)); }),
                      2 * keyCount);
        }
    }
}

TEST(HashFactors, TheSetsAreHardForAHashWithoutASecret) {
    auto const lower = ChosenKeys::sameLowerHalf(keyCount);
    EXPECT_GT(probes(lower, 2 * keyCount, [](U64 key) { return lowBits(Vex::hashMix(key)); }),
              1000 * keyCount);
    auto const upper = ChosenKeys::sameUpperHalf(keyCount);
    EXPECT_GT(compared(upper, keyCount, [](U64 key) { return topBits(Vex::hashMix(key)); }),
              1000 * keyCount);
}

TEST(HashFactors, EitherWordOfAKeyCanCarryTheDifference) {
    auto const chosen = ChosenKeys::sameLowerHalf(keyCount);
    for (U64 seed = 1; seed <= 20; ++seed) {
        auto const factors = Factors::fromSeed(seed);
        auto const inFirst = [&](U64 key) { return factors.hash(std::array{key, U64{7}}); };
        auto const inSecond = [&](U64 key) { return factors.hash(std::array{U64{7}, key}); };
        // The words of one key follow from each other so that a sum of them would be the same.
        auto const inBoth = [&](U64 key) { return factors.hash(std::array{key, U64{7} - key}); };
        EXPECT_LT(probes(chosen, 2 * keyCount, [&](U64 key) { return lowBits(inFirst(key)); }),
                  2 * keyCount);
        EXPECT_LT(probes(chosen, 2 * keyCount, [&](U64 key) { return lowBits(inSecond(key)); }),
                  2 * keyCount);
        EXPECT_LT(probes(chosen, 2 * keyCount, [&](U64 key) { return lowBits(inBoth(key)); }),
                  2 * keyCount);
    }
}

TEST(HashFactors, EveryBitOfTheHashDependsOnTheFactors) {
    for (U64 const key : {U64{0}, U64{1}, U64{1} << 63}) {
        U64 ones = 0;
        U64 zeros = 0;
        for (U64 seed = 1; seed <= 64; ++seed) {
            U64 const hash = Factors::fromSeed(seed).hash(std::array{key});
            ones |= hash;
            zeros |= ~hash;
        }
        EXPECT_EQ(ones & zeros, ~U64{0}) << key;
    }
}

TEST(HashFactors, OneSeedGivesOneFunction) {
    auto const hash = [](U64 seed) { return Factors::fromSeed(seed).hash(std::array{U64{5}}); };
    EXPECT_EQ(hash(1), hash(1));
    EXPECT_NE(hash(1), hash(2));
}
