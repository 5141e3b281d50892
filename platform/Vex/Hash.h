#pragma once

#include "Vex/Types.h"

namespace Vex {

/// Spreads a number over all 64 bits, so that a hash table can take its slot from any of
/// them, including the top ones.
///
/// Addresses and identifiers of one network differ only in a few low bits; unmixed, they
/// would pile up in a few slots. This is the finaliser of SplitMix64 (Steele, Lea and
/// Flood, 2014): two multiplications, no table, and a bijection, so two keys of at most
/// 64 bits never share a hash. It is not keyed, so it is no defence against chosen keys:
/// collections hash with `keyedHash` (KeyedHash.h).
constexpr U64 hashMix(U64 bits) noexcept {
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9U;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebU;
    return bits ^ (bits >> 31);
}

/// 2^64 over the golden ratio, an odd number: the step of SplitMix64.
inline constexpr U64 goldenRatio = 0x9e3779b97f4a7c15U;

/// The next number of the sequence of SplitMix64 after `state`, which it advances.
constexpr U64 splitMix(U64 & state) noexcept {
    state += goldenRatio;
    return hashMix(state);
}

} // namespace Vex
