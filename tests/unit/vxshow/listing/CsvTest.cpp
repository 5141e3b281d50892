#include "vxshow/listing/Csv.h"
#include "tests/unit/vxshow/listing/Hosts.h"

#include <gtest/gtest.h>

namespace vxshow::test {

namespace {

std::string csv(std::vector<Host> const & rows) {
    return written(listing::writeCsv, rows, allHostColumns, false);
}

constexpr char const * rest = ",10,02:00:00:00:00:01,0,\r\n";

} // namespace

TEST(Csv, ARowIsALineBelowTheKeys) {
    EXPECT_EQ(written(listing::writeCsv, {host("a", 4098, Vex::U64{3}, ipCell("2001:db8::1"))}),
              "name,vni,macAddr,moveCount,ipAddress\r\n"
              "a,4098,02:00:00:00:00:01,3,2001:db8::1\r\n");
}

TEST(Csv, WithoutRowsTheHeaderStays) {
    EXPECT_EQ(written(listing::writeCsv, {}), "name,vni,macAddr,moveCount,ipAddress\r\n");
}

TEST(Csv, AnUnknownValueIsEmpty) {
    EXPECT_EQ(csv({host("a", 10, listing::Unknown())}), "a,10,02:00:00:00:00:01,,\r\n");
}

TEST(Csv, AnEmptyNameIsQuotedSoThatItDiffersFromAnUnknownOne) {
    EXPECT_EQ(csv({host("")}), std::string("\"\"") + rest);
}

TEST(Csv, ANameWithACommaAQuotationMarkOrALineEndIsQuoted) {
    EXPECT_EQ(csv({host("a,b")}), std::string("\"a,b\"") + rest);
    EXPECT_EQ(csv({host("a\"b")}), std::string("\"a\"\"b\"") + rest);
    EXPECT_EQ(csv({host("a\nb")}), std::string("\"a\nb\"") + rest);
    EXPECT_EQ(csv({host("a\rb")}), std::string("\"a\rb\"") + rest);
}

TEST(Csv, OtherBytesOfANameStayAsTheyAre) {
    EXPECT_EQ(csv({host("S\u00fcd \xff\x1b")}), std::string("S\u00fcd \xff\x1b") + rest);
}

TEST(Csv, ACountAbove2147483647IsUnsigned) {
    EXPECT_EQ(csv({host("a", 10, Vex::U64{4294967295})}), "a,10,02:00:00:00:00:01,4294967295,\r\n");
}

TEST(Csv, AnUnknownNameIsEmptyInAnyColumn) {
    Host unknown = host("");
    unknown[0] = listing::Unknown();
    EXPECT_EQ(written(listing::writeCsv, {unknown, unknown}, {0, 1}, false), ",10\r\n,10\r\n");
    EXPECT_EQ(written(listing::writeCsv, {unknown, unknown}, {1, 0}, false), "10,\r\n10,\r\n");
}

TEST(Csv, ANameThatRepeatsIsWrittenInEachRow) {
    std::string const name = "a,b";
    std::string const same = "a,b";
    EXPECT_EQ(written(listing::writeCsv, {host(name), host(name, 11), host(same), host("c")},
                      {0, 1}, false),
              "\"a,b\",10\r\n\"a,b\",11\r\n\"a,b\",10\r\nc,10\r\n");
}

TEST(Csv, ALongNameIsWhole) {
    std::string const name(70'000, 'x');
    EXPECT_EQ(written(listing::writeCsv, {host(name)}, {0, 1}, false), name + ",10\r\n");
}

TEST(Csv, ColumnsComeInTheChosenOrder) {
    EXPECT_EQ(written(listing::writeCsv, {host("a", 20)}, {1, 0}), "vni,name\r\n20,a\r\n");
}

TEST(Csv, OnATerminalLinesEndAsThereUsual) {
    EXPECT_EQ(written(listing::writeCsv, {host("a")}, {0}, true, {.isTerminal = true}),
              "name\na\n");
}

TEST(Csv, AVniIsDecimalEvenIfOthersAreDotted) {
    EXPECT_EQ(written(listing::writeCsv, {host("a", 4098)}, {1}, false, {.dottedVni = true}),
              "4098\r\n");
}

} // namespace vxshow::test
