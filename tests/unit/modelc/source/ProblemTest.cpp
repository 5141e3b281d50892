#include "modelc/source/Problem.h"

#include <gtest/gtest.h>

namespace modelc {

TEST(Problems, AreReportedInFileOrder) {
    Problems problems;
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(problems.report("m"), "");
    problems.add({3, 1}, "third");
    problems.add({2, 9}, "second");
    problems.add({2, 1}, "first");
    problems.add({3, 1}, "fourth");
    EXPECT_FALSE(problems.empty());
    EXPECT_EQ(problems.report("dir/m"), "dir/m:2:1: first\n"
                                        "dir/m:2:9: second\n"
                                        "dir/m:3:1: third\n"
                                        "dir/m:3:1: fourth\n");
}

} // namespace modelc
