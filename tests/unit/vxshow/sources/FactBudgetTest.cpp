#include "vxshow/sources/FactBudget.h"

#include "vxshow/sources/Failure.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace vxshow::test {

using namespace sources;

namespace {

std::string tooManyFor(FactBudget & budget, std::size_t count) {
    try {
        budget.spend(count);
    } catch (TooManyFacts const & failure) {
        return failure.what();
    }
    return "accepted";
}

} // namespace

TEST(FactBudget, AllowsAsManyAsItHas) {
    FactBudget budget(3);
    EXPECT_EQ(tooManyFor(budget, 2), "accepted");
    EXPECT_EQ(tooManyFor(budget, 0), "accepted");
    EXPECT_EQ(tooManyFor(budget, 1), "accepted");
    EXPECT_EQ(tooManyFor(budget, 1),
              "too large: more than 3 facts; max_facts in the fabric file, or --max-facts, allows "
              "more, and --vni asks for less");
}

TEST(FactBudget, RefusesAProductWithoutOverflow) {
    FactBudget budget(std::numeric_limits<std::size_t>::max() - 1);
    budget.spend(std::numeric_limits<std::size_t>::max() - 2);
    EXPECT_NE(tooManyFor(budget, std::numeric_limits<std::size_t>::max()), "accepted");
    EXPECT_EQ(tooManyFor(budget, 1), "accepted");
}

TEST(FactBudget, WhatIsDroppedCanBeSpentAgain) {
    FactBudget budget(1);
    budget.spend();
    budget.giveBack(1);
    EXPECT_EQ(tooManyFor(budget, 1), "accepted");
    EXPECT_EQ(tooManyFor(budget, 1).substr(0, 27), "too large: more than 1 fact");
}

} // namespace vxshow::test
