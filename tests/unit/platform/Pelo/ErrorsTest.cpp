#include "Pelo/Errors.h"

#include "tests/unit/platform/Pelo/TestTables.h"

#include <gtest/gtest.h>

namespace Pelo {
namespace {

using Test::errorOf;

TEST(PeloErrors, ATableErrorNamesTheTable) {
    EXPECT_STREQ(TableError("hosts", "is missing").what(), "table 'hosts': is missing");
}

TEST(PeloErrors, ACorruptionSaysWhatWasFoundWhereAndWhatWasExpected) {
    EXPECT_STREQ(CorruptionDetectedException("hosts", "header", "1 slots", "2").what(),
                 "table 'hosts', header: 1 slots, expected 2");
    EXPECT_EQ(errorOf<CorruptionDetectedException>([] { throwSlotChecksum("t", 17, 0x1f, 0); }),
              "table 't', slot 17: checksum 0x1f, expected 0x0");
    EXPECT_EQ(errorOf<CorruptionDetectedException>([] { throwSlotState("t", 3, 9); }),
              "table 't', slot 3: state 9, expected 0 (empty), 1 (live) or 2 (dead)");
    EXPECT_EQ(errorOf<CorruptionDetectedException>([] { throwNoEmptySlot("t", 16); }),
              "table 't', slots: none of 16 empty, expected a third of them");
    EXPECT_EQ(errorOf<CorruptionDetectedException>([] { throwLiveCount("t", 4, 5); }),
              "table 't', slots: 4 live entries, expected 5");
}

TEST(PeloErrors, ANameIsQuotedForATerminal) {
    EXPECT_STREQ(TableError("a\x1b[2J", "is missing").what(), "table 'a\\x1b[2J': is missing");
}

TEST(PeloErrors, BothAreErrorsOfTheFramework) {
    EXPECT_THROW(throw TableError("a", "b"), Vex::Error);
    EXPECT_THROW(throwNoEmptySlot("a", 1), Vex::Error);
}

} // namespace
} // namespace Pelo
