#pragma once

#include "Vex/HashFactors.h"
#include "Vex/Types.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <string_view>

/// The hash of every collection whose keys come from outside: hosts choose their MAC addresses
/// and IPv6 interface identifiers, and operators and peers choose names.
///
/// The function is drawn at random once per process, so that no one can choose keys that share
/// a place. `HashFactors` says how well numbers are spread; texts first become numbers
/// (`textNumber`). This holds against keys that are chosen without knowledge of the factors. It
/// is no defence against someone who observes hashes, the order of a walk over a hashed
/// collection, or the time of many searches, and so could learn the factors: what the program
/// prints depends on none of these.
namespace [[gnu::visibility("default")]] Vex {

/// The random choice of one hash function.
struct HashSecret {
    static constexpr std::size_t mostWords = 3;

    HashFactors<mostWords> factors;
    /// Where the polynomial of a text is evaluated; below 2^61 - 1.
    U64 textBase = 0;
};

/// The secret of this process, drawn when the library is loaded, before any other object of
/// static storage duration. Read it only through the functions below.
///
/// The environment variable `VEX_HASH_SEED`, a decimal number of 64 bits, replaces the random
/// draw, so that a run can be repeated exactly; it takes the protection away. A value that is
/// not such a number is ignored here: a front end should refuse it (`isHashSeed`).
extern HashSecret const hashSecret;

/// The hash of a key of up to three words of 64 bits, or less wide ones.
template <std::convertible_to<U64>... Words>

requires(sizeof...(Words) >= 1 && sizeof...(Words) <= HashSecret::mostWords) inline U64
    keyedHash(Words... words) noexcept {
    return hashSecret.factors.hash(std::array<U64, sizeof...(Words)>{static_cast<U64>(words)...});
}

/// A number that two different texts share with a probability of at most one seventh of the
/// length of the longer one, rounded up, in 2^61. It takes the place of a text in `keyedHash`.
U64 textNumber(std::string_view text) noexcept;

/// The hash of a text.
inline U64 keyedHash(std::string_view text) noexcept {
    return keyedHash(textNumber(text));
}

/// The process's value of `VEX_HASH_SEED`, or null if it is not set or empty.
char const * hashSeedText() noexcept;

/// Whether `text` is a seed that `VEX_HASH_SEED` accepts: a decimal number of 64 bits.
bool isHashSeed(std::string_view text) noexcept;

/// Draws the seed of a hash function for data that other processes read too. Never 0. Each
/// call gives another one; with `VEX_HASH_SEED`, those of one sequence.
U64 drawHashSeed() noexcept;

} // namespace Vex
