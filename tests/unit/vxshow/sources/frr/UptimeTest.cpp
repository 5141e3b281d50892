#include "vxshow/sources/frr/Uptime.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using sources::frr::readUptime;

TEST(FrrUptime, IsAClockWithinADay) {
    EXPECT_EQ(readUptime("00:00:00"), 0U);
    EXPECT_EQ(readUptime("01:02:03"), 3723U);
}

TEST(FrrUptime, IsDaysAndWeeksAfterwards) {
    EXPECT_EQ(readUptime("1d00h00m"), 86400U);
    EXPECT_EQ(readUptime("6d23h59m"), 604740U);
    EXPECT_EQ(readUptime("02w3d04h"), 1483200U);
}

TEST(FrrUptime, AnythingElseIsUnknown) {
    for (auto const * const text :
         {"", "1", "01:02", "01:02:03:04", "01:02:03 ", "1d2h", "1d2h3m4s", "-1:00:00", "a:b:c",
          "00001:00:00", "1h2d3m", "01:02:", "::"}) {
        EXPECT_EQ(readUptime(text), std::nullopt) << text;
    }
}

} // namespace vxshow::test
