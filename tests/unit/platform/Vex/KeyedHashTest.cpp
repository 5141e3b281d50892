#include "Vex/KeyedHash.h"

#include "Vex/RandomNumber.h"
#include "Vex/String.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>

using Vex::U64;

TEST(KeyedHash, HasOneHashPerKeyAndProcess) {
    EXPECT_EQ(Vex::keyedHash(1), Vex::keyedHash(1));
    EXPECT_NE(Vex::keyedHash(1), Vex::keyedHash(2));
    EXPECT_NE(Vex::keyedHash(1, 2), Vex::keyedHash(2, 1));
    EXPECT_NE(Vex::keyedHash(1, 2, 3), Vex::keyedHash(1, 3, 2));
}

TEST(KeyedHash, TheSecretHasBeenDrawn) {
    // With factors of 0, all keys would have one hash.
    std::set<U64> hashes;
    for (U64 key = 0; key < 1000; ++key) {
        hashes.insert(Vex::keyedHash(key));
    }
    EXPECT_EQ(hashes.size(), 1000U);
}

TEST(KeyedHash, TextsThatDifferAnywhereHaveDifferentNumbers) {
    std::set<U64> numbers;
    std::size_t texts = 0;
    for (std::size_t length = 0; length < 40; ++length) {
        // NULs, so that only the length tells them apart, and each place changed in turn.
        numbers.insert(Vex::textNumber(std::string(length, '\0')));
        ++texts;
        for (std::size_t at = 0; at < length; ++at) {
            std::string text(length, '\0');
            text[at] = 'x';
            numbers.insert(Vex::textNumber(text));
            ++texts;
        }
    }
    EXPECT_EQ(numbers.size(), texts);
}

TEST(KeyedHash, WordsThatAreCongruentModuloThePrimeDoNotCollide) {
    // 2^61 - 1 in eight bytes and 0 in eight bytes, least significant byte first.
    std::string const prime("\xff\xff\xff\xff\xff\xff\xff\x1f");
    EXPECT_NE(Vex::textNumber(prime), Vex::textNumber(std::string(8, '\0')));
}

TEST(KeyedHash, ATextOfBytesAboveHalfIsHashed) {
    EXPECT_NE(Vex::textNumber(std::string(100, '\xff')), Vex::textNumber(std::string(99, '\xff')));
    EXPECT_EQ(Vex::textNumber(std::string(100, '\xff')), Vex::textNumber(std::string(100, '\xff')));
}

TEST(KeyedHash, ASeedIsADecimalNumberOf64Bits) {
    for (char const * good : {"0", "1", "007", "18446744073709551615"}) {
        EXPECT_TRUE(Vex::isHashSeed(good)) << good;
    }
    for (char const * bad :
         {"", "x", "-1", "+1", "1x", " 1", "1 ", "0x10", "18446744073709551616", "1.0"}) {
        EXPECT_FALSE(Vex::isHashSeed(bad)) << bad;
    }
}

TEST(KeyedHash, EachDrawnSeedIsAnother) {
    std::set<U64> seeds;
    for (int i = 0; i < 1000; ++i) {
        seeds.insert(Vex::drawHashSeed());
    }
    EXPECT_EQ(seeds.size(), 1000U);
    EXPECT_EQ(seeds.count(0), 0U);
}

TEST(RandomNumber, IsWhatTheSystemGives) {
    EXPECT_EQ(Vex::randomNumber([] { return U64{5}; }), 5U);
}

TEST(RandomNumber, DiffersEachTimeEvenIfTheSystemGivesNone) {
    std::set<U64> numbers;
    for (int i = 0; i < 1000; ++i) {
        numbers.insert(Vex::randomNumber([]() -> U64 { throw std::runtime_error("no device"); }));
    }
    EXPECT_EQ(numbers.size(), 1000U);
}
