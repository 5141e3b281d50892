#pragma once

#include "Vex/Hash.h"
#include "Vex/Types.h"

#include <span>

namespace Pelo {

using Vex::U32;
using Vex::U64;
using Vex::U8;

/// The checksum of `words`, starting from `seed`: what the words are and where they stand
/// both count.
///
/// Each step is one of SplitMix64 (Steele, Lea and Flood, 2014): an addition of 2^64 over
/// the golden ratio, then its finaliser. Both are bijections of 64 bits, so two runs of
/// words that differ in one word only, by however many of its bits, always have different
/// sums; of those that differ in more, about one in 2^64 slips through. A CRC-32 promises
/// no more for these lengths and takes a table or a special instruction, and a command
/// checks millions of slots. One multiplication a word would be cheaper still, but it
/// leaves a word's top bits in a few places, where three flipped bits in two words can make
/// up for each other. It is no defence against somebody who forges.
constexpr U64 checksum(U64 seed, std::span<U64 const> words) noexcept {
    constexpr U64 goldenRatio = 0x9e3779b97f4a7c15U;
    U64 sum = seed + goldenRatio;
    for (U64 const word : words) {
        sum = Vex::hashMix((sum ^ word) + goldenRatio);
    }
    return sum;
}

} // namespace Pelo
