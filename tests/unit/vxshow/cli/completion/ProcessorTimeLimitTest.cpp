#include "vxshow/cli/completion/ProcessorTimeLimit.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

using vxshow::cli::completion::ProcessorTimeLimit;

namespace {

/// Computes until the process has used that many clock ticks more.
void compute(std::clock_t ticks) {
    for (auto const end = std::clock() + ticks; std::clock() < end;) {
    }
}

} // namespace

TEST(ProcessorTimeLimitDeathTest, EndsAProcessThatComputesForLonger) {
    EXPECT_EXIT(
        {
            ProcessorTimeLimit const limit(std::chrono::milliseconds(1));
            compute(60 * CLOCKS_PER_SEC);
            std::exit(3);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST(ProcessorTimeLimitDeathTest, IsLiftedAtItsEnd) {
    EXPECT_EXIT(
        {
            { ProcessorTimeLimit const limit(std::chrono::milliseconds(200)); }
            compute(CLOCKS_PER_SEC / 2);
            std::exit(3);
        },
        testing::ExitedWithCode(3), "^$");
}
