#include "tests/live/Requirements.h"

#include <gtest/gtest.h>

int main(int argc, char ** argv) {
    extendPath();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
