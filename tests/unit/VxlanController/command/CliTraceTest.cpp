#include "Trace/Handle.h"

#include <gtest/gtest.h>

TEST(CliTrace, CanBeEnabledByNameBeforeTheFirstCommand) {
    EXPECT_TRUE(Trace::enableUpTo("VxlanControllerCli", 8));
    Trace::disableAll();
}
