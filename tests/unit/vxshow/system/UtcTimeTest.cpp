#include "vxshow/system/UtcTime.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using system::UtcTime;

namespace {

std::string again(std::string_view text) {
    auto const time = UtcTime::tryFromString(text);
    return time ? time->stringValue() : "invalid";
}

} // namespace

TEST(UtcTime, IsWrittenInMilliseconds) {
    EXPECT_EQ(UtcTime({}).stringValue(), "1970-01-01T00:00:00.000Z");
    EXPECT_EQ(
        UtcTime(std::chrono::sys_time(std::chrono::milliseconds(1790000000125))).stringValue(),
        "2026-09-21T14:13:20.125Z");
}

TEST(UtcTime, IsReadWithAndWithoutAFraction) {
    EXPECT_EQ(again("2026-11-23T02:10:11Z"), "2026-11-23T02:10:11.000Z");
    EXPECT_EQ(again("2026-11-23T02:10:11.1Z"), "2026-11-23T02:10:11.100Z");
    EXPECT_EQ(again("2026-11-23T02:10:11.125999Z"), "2026-11-23T02:10:11.125Z");
    EXPECT_EQ(again("2024-02-29T23:59:59.999999999Z"), "2024-02-29T23:59:59.999Z");
    EXPECT_EQ(again("0000-01-01T00:00:00Z"), "0000-01-01T00:00:00.000Z");
}

TEST(UtcTime, AnythingElseIsInvalid) {
    for (auto const * const text : {"",
                                    "2026-11-23",
                                    "2026-11-23T02:10:11",
                                    "2026-11-23T02:10:11+00:00",
                                    "2026-11-23 02:10:11Z",
                                    "2026-11-23T02:10:11.Z",
                                    "2026-11-23T02:10:11.1234567890Z",
                                    "2026-11-23T02:10:11.1",
                                    "2026-11-23T02:10:11.1ZZ",
                                    "2026-11-23T02:10:11ZZ",
                                    "2026-02-29T00:00:00Z",
                                    "2026-13-01T00:00:00Z",
                                    "2026-00-01T00:00:00Z",
                                    "2026-01-00T00:00:00Z",
                                    "2026-01-01T24:00:00Z",
                                    "2026-01-01T00:60:00Z",
                                    "2026-01-01T00:00:60Z",
                                    "+026-01-01T00:00:00Z",
                                    "2026-1-01T00:00:00Z",
                                    "2026-01-01T00:00:0aZ",
                                    "2026-01-01T00:00:00.a0Z"}) {
        EXPECT_EQ(again(text), "invalid") << text;
    }
}

TEST(UtcTime, NowIsAfterTheDayOnWhichThisWasWritten) {
    EXPECT_GT(UtcTime::now(), *UtcTime::tryFromString("2026-11-01T00:00:00Z"));
}

} // namespace vxshow::test
