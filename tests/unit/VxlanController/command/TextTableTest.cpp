#include "VxlanController/command/TextTable.h"

#include <gtest/gtest.h>

using namespace VxlanController::Cli;

namespace {

constexpr Column name{.title = "Name", .width = 8};
constexpr Column address{.title = "Address", .width = 15, .cell = Cell::cutText};
constexpr Column count{.title = "Count", .width = 5, .cell = Cell::number};
constexpr Column age{.title = "Age", .width = 9, .cell = Cell::leftNumber, .headerWidth = 11};

constexpr TextTable table{name, address, count, age};

std::string_view text(Line const & line) {
    return line;
}

} // namespace

TEST(TextTable, ComposesTheFormatOfARowFromItsColumns) {
    EXPECT_EQ(text(table.row), "%-8s %-15.15s %5d %-9d\n");
    EXPECT_EQ(text(table.cells), "%-8s %-15.15s %5d %-9d");
}

TEST(TextTable, ComposesTheHeaderFromItsColumns) {
    EXPECT_EQ(text(table.titles), "Name     Address         Count Age");
    EXPECT_EQ(text(table.paddedTitles), "Name     Address         Count Age        ");
    EXPECT_EQ(text(table.underline), "-------- --------------- ----- -----------");
    EXPECT_EQ(text(table.rule), "------------------------------------------");
    EXPECT_EQ(table.width, text(table.rule).size());
}

TEST(TextTable, AColumnCanHaveAnotherWidthInTheHeader) {
    constexpr TextTable other{name.withHeaderWidth(10), count};
    EXPECT_EQ(text(other.titles), "Name       Count");
    EXPECT_EQ(text(other.underline), "---------- -----");
    EXPECT_EQ(text(other.row), "%-8s %5d\n");
}

TEST(TextTable, TheOnlyColumnHasNoBlanksAroundIt) {
    constexpr TextTable other{count};
    EXPECT_EQ(text(other.titles), "Count");
    EXPECT_EQ(text(other.underline), "-----");
    EXPECT_EQ(text(other.row), "%5d\n");
}
