#include "Vex/KeyedHash.h"

#include "Vex/RandomNumber.h"

#include <atomic>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <random>

namespace [[gnu::visibility("default")]] Vex {

namespace {

// A Mersenne prime: a number is reduced by adding its upper bits to its lower ones.
constexpr unsigned primeBits = 61;
constexpr U64 prime = (U64{1} << primeBits) - 1;

// Eight bytes could exceed the prime, and two such words could then be the same number.
constexpr std::size_t bytesOfWord = 7;

U64 productModPrime(U64 a, U64 b) noexcept {
    __extension__ using Wide = unsigned __int128;
    auto const product = static_cast<Wide>(a) * b;
    U64 const sum = (static_cast<U64>(product) & prime) + static_cast<U64>(product >> primeBits);
    return (sum & prime) + (sum >> primeBits);
}

U64 wordOf(char const * bytes, std::size_t count) noexcept {
    U64 word = 0;
    std::memcpy(&word, bytes, count);
    return word;
}

std::optional<U64> readHashSeed(std::string_view text) noexcept {
    U64 seed = 0;
    auto const read = std::from_chars(text.data(), text.data() + text.size(), seed);
    bool const whole = read.ec == std::errc() && read.ptr == text.data() + text.size();
    return whole ? std::optional(seed) : std::nullopt;
}

U64 drawFromSystem() {
    std::random_device device;
    U64 const upper = device();
    return upper << 32 | device();
}

// The secret is drawn before other static objects exist, so what this needs is static here.
U64 nextNumber() noexcept {
    static std::optional<U64> const seed =
        hashSeedText() ? readHashSeed(hashSeedText()) : std::nullopt;
    if (!seed) {
        return randomNumber(drawFromSystem);
    }
    static std::atomic<U64> drawn{0};
    return hashMix(*seed + goldenRatio * ++drawn);
}

HashSecret drawSecret() noexcept {
    return {.factors = HashFactors<HashSecret::mostWords>::drawnFrom(nextNumber),
            .textBase = nextNumber() % prime};
}

} // namespace

[[gnu::init_priority(101)]] HashSecret const hashSecret = drawSecret();

U64 textNumber(std::string_view text) noexcept {
    // The length comes first: it distinguishes a text from one that ends with more NULs.
    U64 sum = text.size();
    char const * at = text.data();
    std::size_t left = text.size();
    for (; left >= bytesOfWord; at += bytesOfWord, left -= bytesOfWord) {
        sum = productModPrime(sum, hashSecret.textBase) + wordOf(at, bytesOfWord);
    }
    if (left > 0) {
        sum = productModPrime(sum, hashSecret.textBase) + wordOf(at, left);
    }
    return sum;
}

char const * hashSeedText() noexcept {
    char const * const text = std::getenv("VEX_HASH_SEED");
    return text && *text ? text : nullptr;
}

bool isHashSeed(std::string_view text) noexcept {
    return readHashSeed(text).has_value();
}

U64 drawHashSeed() noexcept {
    U64 seed = 0;
    while (seed == 0) {
        seed = nextNumber();
    }
    return seed;
}

} // namespace Vex
