#include "vxshow/sources/Sorting.h"

#include "tests/unit/vxshow/sources/CountedClock.h"
#include "vxshow/sources/Failure.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <random>
#include <string>

namespace vxshow::test {

using namespace sources;

namespace {

constexpr auto neverOver = std::numeric_limits<std::size_t>::max();
constexpr std::size_t severalRuns = 4 * mostSortedAtOnce + 7;

/// Numbers below `limit`; the same ones each time.
std::vector<unsigned> numbers(std::size_t count, unsigned limit) {
    std::minstd_rand random(static_cast<unsigned>(count));
    std::vector<unsigned> all(count);
    for (auto & one : all) {
        one = static_cast<unsigned>(random()) % limit;
    }
    return all;
}

std::vector<unsigned> descending(std::size_t count) {
    std::vector<unsigned> all(count);
    std::iota(all.rbegin(), all.rend(), 0U);
    return all;
}

template <class T>
void expectSorted(std::vector<T> all) {
    auto expected = all;
    std::sort(expected.begin(), expected.end());
    DeadlineWatch watch(Deadline::never());
    sortList(all, std::less<>(), watch);
    EXPECT_TRUE(all == expected) << all.size() << " elements";
}

/// Compares, and counts that as work of the clock.
constexpr auto countedLess = [](unsigned a, unsigned b) {
    CountedClock::work();
    return a < b;
};

/// Does `work(watch)` with a deadline at every tenth of the looks that it takes; each time but the
/// last it must end there.
template <class Work>
void expectToEndAtAnyLook(Work && work) {
    auto const attempt = [&](std::size_t looks) {
        DeadlineWatch watch(CountedClock::overAfter(looks));
        work(watch);
    };
    attempt(neverOver);
    auto const all = CountedClock::looks();
    ASSERT_GT(all, 10U);
    for (std::size_t tenth = 0; tenth < 10; ++tenth) {
        auto const looks = all * tenth / 10;
        EXPECT_THROW(attempt(looks), TimedOut) << looks << " of " << all;
        EXPECT_EQ(CountedClock::looks(), looks + 1);
    }
    EXPECT_NO_THROW(attempt(all));
}

} // namespace

TEST(Sorting, ListsOfEverySizeAreSorted) {
    for (std::size_t const runs : {0, 1, 2, 3, 4, 5}) {
        for (std::size_t const more : {0, 1, 2, 100}) {
            auto const count = runs * mostSortedAtOnce + more;
            expectSorted(numbers(count, 1'000'000'000));
            expectSorted(numbers(count, 10));
            expectSorted(descending(count));
        }
    }
}

TEST(Sorting, TextsAreMoved) {
    std::vector<std::string> texts;
    for (unsigned const number : numbers(3 * mostSortedAtOnce, 1000)) {
        texts.push_back("a text that is longer than a short string " + std::to_string(number));
    }
    expectSorted(texts);
}

TEST(Sorting, RunsOfAnyLengthAreMerged) {
    std::vector<unsigned> all{5, 6, 7, 1, 2, 6, 0, 9};
    DeadlineWatch watch(Deadline::never());
    mergeRuns(all, {0, 0, 3, 3, 6, 7, 8, 8}, std::less<>(), watch);
    EXPECT_EQ(all, (std::vector<unsigned>{0, 1, 2, 5, 6, 6, 7, 9}));
    mergeRuns(all, {0}, std::less<>(), watch);
    mergeRuns(all, {0, 8}, std::less<>(), watch);
    EXPECT_EQ(all.size(), 8U);
}

TEST(Sorting, TheFirstOfThoseThatAreTheSameStays) {
    std::vector<std::pair<int, int>> all{{1, 5}, {1, 4}, {2, 3}, {1, 2}};
    DeadlineWatch watch(Deadline::never());
    removeRepetitions(
        all, [](auto const & a, auto const & b) { return a.first == b.first; }, watch);
    EXPECT_EQ(all, (std::vector<std::pair<int, int>>{{1, 5}, {2, 3}, {1, 2}}));
}

// A run of n elements takes a little more than n log n comparisons.
TEST(Sorting, FewComparisonsAreMadeBetweenTwoLooks) {
    for (auto all : {numbers(severalRuns, 1'000'000'000), descending(severalRuns)}) {
        DeadlineWatch watch(CountedClock::overAfter(neverOver));
        sortList(all, countedLess, watch);
        EXPECT_LT(CountedClock::mostWork(), 2 * 16 * mostSortedAtOnce);
    }
}

TEST(Sorting, FewComparisonsOfASortedListAreMadeBetweenTwoLooks) {
    auto all = descending(severalRuns);
    std::reverse(all.begin(), all.end());
    DeadlineWatch watch(CountedClock::overAfter(neverOver));
    sortList(all, countedLess, watch);
    EXPECT_LE(CountedClock::mostWork(), 4096U);
}

TEST(Sorting, FewComparisonsOfAMergeAreMadeBetweenTwoLooks) {
    auto all = descending(severalRuns);
    std::reverse(all.begin(), all.end());
    std::rotate(all.begin(), all.begin() + severalRuns / 2, all.end());
    DeadlineWatch watch(CountedClock::overAfter(neverOver));
    mergeRuns(all, {0, severalRuns - severalRuns / 2, severalRuns}, countedLess, watch);
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
    EXPECT_LE(CountedClock::mostWork(), 4096U);
}

TEST(Sorting, FewComparisonsForRepetitionsAreMadeBetweenTwoLooks) {
    auto all = numbers(severalRuns, 2);
    DeadlineWatch watch(CountedClock::overAfter(neverOver));
    removeRepetitions(
        all,
        [](unsigned a, unsigned b) {
            CountedClock::work();
            return a == b;
        },
        watch);
    EXPECT_LE(CountedClock::mostWork(), 4096U);
}

TEST(Sorting, EndsWhenTheDeadlineIsOverInItsMidst) {
    expectToEndAtAnyLook([](DeadlineWatch & watch) {
        auto all = numbers(severalRuns, 1'000'000'000);
        sortList(all, std::less<>(), watch);
    });
}

TEST(Sorting, AShortListIsSortedAfterTheDeadline) {
    auto all = descending(2000);
    DeadlineWatch watch(CountedClock::overAfter(0));
    sortList(all, std::less<>(), watch);
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
}

} // namespace vxshow::test
