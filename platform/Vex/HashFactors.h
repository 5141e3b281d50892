#pragma once

#include "Vex/Hash.h"
#include "Vex/Types.h"

#include <array>
#include <cstddef>

namespace Vex {

/// One member of a family of hash functions for keys of up to `most` words of 64 bits.
///
/// A key is multiplied word by word with factors of 128 bits; the hash is the upper half of the
/// sum, with its bits mixed once more. If the factors are random, any two different keys with
/// the same number of words take any two given values of any l bits of their hashes with a
/// probability of at most two in 2^2l, twice that of independent random numbers (vector
/// multiply-shift: Thorup, High Speed Hashing for Integers and Strings, 2015, section 3; twice,
/// because only the upper half has an addend). That is true of all keys, however they were
/// chosen, as long as they were chosen without knowledge of the factors: keys that differ only
/// in their top bits, as well as those that collide under `hashMix`. One 64-bit factor would
/// not do: the low bits of a product say nothing about the high bits of the key.
///
/// Linear probing needs more than pairs: an arithmetic progression of keys is again one after
/// the sum, and if its step is small, it fills one long run of places. So the sum, which for
/// such keys is a sequence with a random start and a random step, is mixed as SplitMix64 mixes
/// its sequence. The mixing is a bijection and keeps the promise above. It cannot be moved in
/// front of the multiplication: it is known, and keys can be chosen so that the progression
/// comes out of it.
///
/// A hash costs two multiplications per word and one more, where `hashMix` costs two and gives
/// no promise.
template <std::size_t most>
class HashFactors {
public:
    /// Factors that are all 0, so that all keys have one hash.
    constexpr HashFactors() noexcept = default;

    /// Takes each factor from `next()`, which returns random numbers of 64 bits.
    template <class Next>
    static constexpr HashFactors drawnFrom(Next && next) {
        HashFactors drawn;
        for (std::size_t i = 0; i < most; ++i) {
            drawn.low_[i] = next();
            drawn.high_[i] = next();
        }
        drawn.addend_ = next();
        return drawn;
    }

    /// The factors that follow from a seed: the outputs of SplitMix64 after it. As good as
    /// random ones to anyone who does not know the seed.
    static constexpr HashFactors fromSeed(U64 seed) noexcept {
        return drawnFrom([at = seed]() mutable { return splitMix(at); });
    }

    /// The hash of a key.
    template <std::size_t count>

    requires(count >= 1 && count <= most) constexpr U64
        hash(std::array<U64, count> const & words) const noexcept {
        __extension__ using Wide = unsigned __int128;
        Wide low = 0;
        U64 high = addend_;
        for (std::size_t i = 0; i < count; ++i) {
            low += static_cast<Wide>(low_[i]) * words[i];
            high += high_[i] * words[i];
        }
        return mixed(static_cast<U64>(low >> 64) + high);
    }

private:
    static constexpr U64 mixed(U64 sum) noexcept {
        sum = (sum ^ (sum >> 32)) * goldenRatio;
        return sum ^ (sum >> 32);
    }

    std::array<U64, most> low_{};
    std::array<U64, most> high_{};
    U64 addend_ = 0;
};

} // namespace Vex
