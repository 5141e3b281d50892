#include "VxlanController/command/SortByNumbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

using Vex::U64;
using VxlanController::Cli::sortByNumbers;

namespace {

std::vector<U64> sorted(std::vector<U64> numbers) {
    std::size_t steps = 0;
    std::size_t const count = numbers.size();
    sortByNumbers(
        numbers, [](U64 number) { return std::array{number}; }, [&] { ++steps; });
    EXPECT_GE(steps, count > 1 ? count - 1 : 0);
    return numbers;
}

void expectSorted(std::vector<U64> const & numbers) {
    auto expected = numbers;
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(sorted(numbers), expected);
}

template <class Make>
std::vector<U64> numbers(std::size_t count, Make make) {
    std::vector<U64> result;
    std::generate_n(std::back_inserter(result), count, make);
    return result;
}

} // namespace

TEST(SortByNumbers, SizesAroundTheThresholdForBuckets) {
    std::mt19937_64 random(1);
    for (std::size_t count : {0U, 1U, 2U, 511U, 512U, 513U, 514U, 4000U}) {
        expectSorted(numbers(count, [&] { return random(); }));
    }
}

TEST(SortByNumbers, ConsecutiveNumbers) {
    U64 next = 50'000;
    expectSorted(numbers(50'000, [&] { return --next; }));
}

TEST(SortByNumbers, AddressesOfAFewVendors) {
    std::mt19937_64 random(2);
    expectSorted(numbers(50'000, [&] { return (random() % 4) << 40 | random() % (1 << 24); }));
}

TEST(SortByNumbers, OneNumberFarFromTheOthersInEveryPass) {
    std::vector<U64> halving;
    for (U64 number = 0; number < 20'000; ++number) {
        halving.push_back(~U64{0} >> number % 64);
        halving.push_back(number);
    }
    expectSorted(halving);
}

TEST(SortByNumbers, TheLeastAndTheGreatestNumber) {
    std::mt19937_64 random(3);
    expectSorted(numbers(2'000, [&] { return random() % 2 == 0 ? 0 : ~U64{0}; }));
}

TEST(SortByNumbers, EqualNumbers) {
    expectSorted(std::vector<U64>(2'000, 7));
    expectSorted(std::vector<U64>(2'000, ~U64{0}));
}

TEST(SortByNumbers, ItemsMoveWithTheirNumbers) {
    struct Item {
        U64 number;
        U64 payload;
    };

    std::vector<Item> items;
    for (U64 number = 5'000; number-- > 0;) {
        items.push_back({number, number * 3});
    }
    sortByNumbers(
        items, [](Item const & item) { return std::array{item.number}; }, [] {});
    for (U64 at = 0; at < items.size(); ++at) {
        EXPECT_EQ(items[at].number, at);
        EXPECT_EQ(items[at].payload, at * 3);
    }
}

TEST(SortByNumbers, TheFirstNumberIsTheMostSignificant) {
    using Triple = std::array<U64, 3>;
    std::mt19937_64 random(4);
    for (U64 const range : {1U, 2U, 5U, 4000U}) {
        std::vector<Triple> triples;
        for (int item = 0; item < 20'000; ++item) {
            triples.push_back({random() % range, random() % 3 << 62, random() % range});
        }
        auto expected = triples;
        std::sort(expected.begin(), expected.end());
        sortByNumbers(
            triples, [](Triple const & triple) { return triple; }, [] {});
        EXPECT_EQ(triples, expected);
    }
}
