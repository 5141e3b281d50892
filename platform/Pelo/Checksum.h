#pragma once

#include "Vex/Hash.h"
#include "Vex/Types.h"

#include <span>

namespace Pelo {

using Vex::U32;
using Vex::U64;
using Vex::U8;

/// The checksum of `words`, starting from `seed`. It depends on both the words and their
/// order.
///
/// Each step is one of SplitMix64 (Steele, Lea and Flood, 2014): an addition of 2^64 over
/// the golden ratio, then its finaliser. Both are bijections of 64 bits, so two sequences
/// that differ in only one word, in any number of its bits, always have different
/// checksums; of those that differ in more words, about one in 2^64 goes undetected. A
/// CRC-32 guarantees no more for these lengths and needs a table or a special instruction,
/// and a command checks millions of slots. One multiplication per word would be cheaper
/// still, but it spreads a word's top bits to only a few places, where three flipped bits
/// in two words can cancel out. It is no defence against forgery.
constexpr U64 checksum(U64 seed, std::span<U64 const> words) noexcept {
    U64 sum = seed + Vex::goldenRatio;
    for (U64 const word : words) {
        sum = Vex::hashMix((sum ^ word) + Vex::goldenRatio);
    }
    return sum;
}

} // namespace Pelo
