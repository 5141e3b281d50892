#pragma once

#include "Vex/Hash.h"

#include <cstddef>
#include <string>
#include <vector>

/// Keys as someone chooses them who knows the program but not the secret of a process.
namespace ChosenKeys {

using Vex::U64;

using Keys = std::vector<U64>;

/// The number that `hashMix` turns into `mixed`.
constexpr U64 unmixed(U64 mixed) noexcept {
    auto const unshifted = [](U64 bits, unsigned shift) {
        U64 result = bits;
        for (unsigned done = shift; done < 64; done += shift) {
            result = bits ^ (result >> shift);
        }
        return result;
    };
    mixed = unshifted(mixed, 31) * 0x319642b2d24d8ec3U; // the inverses modulo 2^64
    mixed = unshifted(mixed, 27) * 0x96de1b173f119089U;
    return unshifted(mixed, 30);
}

static_assert(Vex::hashMix(unmixed(0x123456789abcdef0U)) == 0x123456789abcdef0U);

/// `count` keys at equal distances.
inline Keys progression(std::size_t count, U64 first, U64 step) {
    Keys keys;
    for (std::size_t i = 0; i < count; ++i) {
        keys.push_back(first + i * step);
    }
    return keys;
}

/// Keys whose `hashMix` has the same lower 32 bits.
inline Keys sameLowerHalf(std::size_t count) {
    Keys keys;
    for (std::size_t i = 0; i < count; ++i) {
        keys.push_back(unmixed(U64{i} << 32 | 0x12345U));
    }
    return keys;
}

/// Keys whose `hashMix` has the same upper 32 bits.
inline Keys sameUpperHalf(std::size_t count) {
    Keys keys;
    for (std::size_t i = 0; i < count; ++i) {
        keys.push_back(unmixed(U64{0x12345} << 32 | i * 77773));
    }
    return keys;
}

/// One of many texts of 16 bytes that the standard library's hash, MurmurHash64A with a known
/// seed, does not tell apart: whatever the first 8 bytes do to it, the others undo.
inline std::string sameStandardHash(U64 number) {
    constexpr U64 factor = 0xc6a4a7935bd1e995U;
    constexpr U64 inverse = 0x5f7a0ea7e59b19bdU;
    constexpr U64 start = 0xc70f6907U ^ (16 * factor);
    auto const shifted = [](U64 bits) { return bits ^ bits >> 47; };
    U64 const second = (start ^ shifted(number * factor) * factor) * factor;
    U64 const words[] = {number, shifted(second * inverse) * inverse};
    return std::string(reinterpret_cast<char const *>(words), sizeof words);
}

struct Chosen {
    std::string how;
    Keys keys;
};

/// Sets of `count` keys, at most 65536, that are known to be hard on some hash function.
inline std::vector<Chosen> allSets(std::size_t count) {
    return {{"one after the other", progression(count, 0x0A000001, 1)},
            {"differ in bits 16 to 31", progression(count, 1, U64{1} << 16)},
            {"differ in bits 32 to 47", progression(count, 1, U64{1} << 32)},
            {"differ in the top 16 bits", progression(count, 1, U64{1} << 48)},
            {"golden ratio", progression(count, 1, 0x9e3779b97f4a7c15U)},
            {"inverse of the golden ratio", progression(count, 0, 0xf1de83e19937733dU)},
            {"same lower half under hashMix", sameLowerHalf(count)},
            {"same upper half under hashMix", sameUpperHalf(count)}};
}

} // namespace ChosenKeys
