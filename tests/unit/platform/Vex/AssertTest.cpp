#include "Vex/Assert.h"

#include <gtest/gtest.h>

namespace Vex {
namespace {

void mustNotBeOdd(int number) {
    assertThat(number % 2 == 0, "number % 2 == 0");
}

TEST(Assert, DoesNothingWhenItHolds) {
    mustNotBeOdd(2);
}

TEST(AssertDeathTest, NamesExpressionAndPlaceAndAborts) {
    EXPECT_EXIT(mustNotBeOdd(3), testing::KilledBySignal(SIGABRT),
                "^AssertTest.cpp:[0-9]+: mustNotBeOdd: assertion 'number % 2 == 0' failed\n$");
}

} // namespace
} // namespace Vex
