#include "vxshow/listing/Plan.h"
#include "vxshow/listing/MacRows.h"

#include <gtest/gtest.h>

namespace vxshow::test {

namespace {

using namespace listing;

Plan plan(Choice const & choice) {
    return std::get<Plan>(planOf(choice, macReceivedTables));
}

std::string misfit(Choice const & choice) {
    return std::get<Misfit>(planOf(choice, macReceivedTables)).line;
}

std::vector<std::size_t> tablesOf(Plan const & plan) {
    std::vector<std::size_t> tables;
    for (TablePlan const & table : plan.tables) {
        tables.push_back(table.table);
    }
    return tables;
}

using Numbers = std::vector<std::size_t>;

} // namespace

TEST(Plan, AllTablesAreShownWithAllColumns) {
    auto const all = plan({});
    EXPECT_EQ(tablesOf(all), (Numbers{0, 1}));
    EXPECT_EQ(all.tables[0].columns, (Numbers{0, 1, 2, 3, 4}));
}

TEST(Plan, CsvHasTheMainTableOrTheOneThatIsNamed) {
    EXPECT_EQ(tablesOf(plan({.form = Form::csv})), Numbers{0});
    EXPECT_EQ(tablesOf(plan({.form = Form::csv, .table = "flood"})), Numbers{1});
}

TEST(Plan, AColumnIsNamedByItsKeyOrItsTitleInUpperOrLowerCase) {
    EXPECT_EQ(plan({.columns = {"vtepIp", "MOVES", "mac address"}}).tables[0].columns,
              (Numbers{3, 4, 2}));
}

TEST(Plan, ATableThatLacksANamedColumnIsNotShown) {
    EXPECT_EQ(tablesOf(plan({.columns = {"vni", "moveCount"}})), Numbers{0});
    EXPECT_EQ(tablesOf(plan({.sort = {"-type"}})), Numbers{1});
    EXPECT_EQ(tablesOf(plan({.form = Form::csv, .sort = {"type"}})), Numbers{1});
}

TEST(Plan, AMinusSignSortsDescending) {
    auto const sort = plan({.sort = {"-moveCount", "vni"}}).tables[0].sort;
    ASSERT_EQ(sort.size(), 2U);
    EXPECT_EQ(sort[0].column, 4U);
    EXPECT_TRUE(sort[0].descending);
    EXPECT_EQ(sort[1].column, 1U);
    EXPECT_FALSE(sort[1].descending);
}

TEST(Plan, AnUnknownColumnIsRefusedWithTheColumnsThereAre) {
    EXPECT_EQ(misfit({.columns = {"vni", "move"}}),
              "--columns: 'move': expected a column: source, vni, macAddr, vtepIp, moveCount "
              "(mac); source, vni, macAddr, vtepIp, vtepIpListType (flood)");
    EXPECT_EQ(misfit({.table = "flood", .sort = {"-moves"}}),
              "--sort: 'moves': expected a column: source, vni, macAddr, vtepIp, vtepIpListType");
}

TEST(Plan, ANameWithAMinusSignIsNoColumnToShow) {
    EXPECT_EQ(misfit({.table = "mac", .columns = {"-vni"}}),
              "--columns: '-vni': expected a column: source, vni, macAddr, vtepIp, moveCount");
}

TEST(Plan, ColumnsThatNoTableHasTogetherAreRefused) {
    EXPECT_EQ(misfit({.columns = {"moveCount"}, .sort = {"type"}}),
              "--columns and --sort: no table has all of these columns; expected columns of one "
              "table: source, vni, macAddr, vtepIp, moveCount (mac); source, vni, macAddr, vtepIp, "
              "vtepIpListType (flood)");
}

TEST(Plan, AColumnThatIsNamedTwiceIsRefused) {
    EXPECT_EQ(misfit({.columns = {"vni", "VNI"}}),
              "--columns: 'vni': given twice; expected each column once");
}

TEST(Plan, AnUnknownTableIsRefusedWithTheTablesThereAre) {
    EXPECT_EQ(misfit({.table = "bum"}), "--table: 'bum': expected one of: mac, flood");
}

} // namespace vxshow::test
