#include "vxshow/listing/Wide.h"
#include "tests/unit/vxshow/listing/Hosts.h"

#include <gtest/gtest.h>

namespace vxshow::test {

namespace {

std::string wide(std::vector<Host> const & rows, std::vector<std::size_t> const & columns,
                 listing::Surface const & surface = {}) {
    return written(listing::writeWide, rows, columns, true, surface);
}

} // namespace

TEST(Wide, AColumnIsAsWideAsItsWidestCell) {
    EXPECT_EQ(wide({host("a", 16777215, Vex::U64{5}, ipCell("10.0.0.1")),
                    host("a name that is long", 7, Vex::U64{1234567},
                         ipCell("2001:db8:aaaa:bbbb:cccc:dddd:eeee:ffff"))},
                   allHostColumns),
              "Name                 VNI       Mac Address       Moves  IP Address\n"
              "a                    16777215  0200.0000.0001        5  10.0.0.1\n"
              "a name that is long  7         0200.0000.0001  1234567  "
              "2001:db8:aaaa:bbbb:cccc:dddd:eeee:ffff\n");
}

TEST(Wide, WithoutRowsTheHeaderStays) {
    EXPECT_EQ(wide({}, {0, 1}), "Name  VNI\n");
}

TEST(Wide, WithoutAHeaderTitlesTakeNoRoom) {
    EXPECT_EQ(written(listing::writeWide, {host("a"), host("b")}, {0, 1}, false), "a  10\nb  10\n");
}

TEST(Wide, AnUnknownValueIsADash) {
    EXPECT_EQ(wide({host("a", 10, listing::Unknown())}, {0, 3, 4}), "Name  Moves  IP Address\n"
                                                                    "a         -  -\n");
}

TEST(Wide, AnUnknownNameBesideLongOnesIsPaddedAsTheyAre) {
    std::string const name(300, 'x');
    Host unknown = host("");
    unknown[0] = listing::Unknown();
    EXPECT_EQ(written(listing::writeWide, {host(name), unknown}, {0, 1}, false),
              name + "  10\n-" + std::string(301, ' ') + "10\n");
}

TEST(Wide, ALongNameIsFollowedByItsRow) {
    std::string const name(70'000, 'x');
    EXPECT_EQ(written(listing::writeWide, {host(name)}, {1, 0, 1}, false),
              "10  " + name + "  10\n");
}

TEST(Wide, ACountAbove2147483647IsUnsigned) {
    EXPECT_EQ(wide({host("a", 10, Vex::U64{4294967295})}, {3}), "     Moves\n4294967295\n");
}

TEST(Wide, AVniCanBeDotted) {
    EXPECT_EQ(wide({host("a", 4098)}, {1}, {.dottedVni = true}), "VNI\n0.16.2\n");
}

TEST(Wide, NamesOfSeveralBytesAreAlignedByWhatIsSeen) {
    EXPECT_EQ(wide({host("S\u00fcd"), host("\u5317\u4eac"), host("abcdef")}, {0, 1}),
              "Name    VNI\n"
              "S\u00fcd     10\n"
              "\u5317\u4eac    10\n"
              "abcdef  10\n");
}

TEST(Wide, BytesThatAreNotUtf8AreEscaped) {
    EXPECT_EQ(wide({host("a\xff"), host("b")}, {0, 1}), "Name   VNI\n"
                                                        "a\\xff  10\n"
                                                        "b      10\n");
}

TEST(Wide, ControlAndInvisibleCharactersAreEscaped) {
    EXPECT_EQ(wide({host("a\n\x1b"), host("b\u200b\u202e")}, {0, 1}),
              "Name                       VNI\n"
              "a\\x0a\\x1b                  10\n"
              "b\\xe2\\x80\\x8b\\xe2\\x80\\xae  10\n");
}

TEST(Wide, AnEmptyNameIsTwoQuotationMarks) {
    EXPECT_EQ(wide({host("")}, {0, 1}), "Name  VNI\n\"\"    10\n");
}

TEST(Wide, OnANarrowTerminalRowsContinueBetweenCells) {
    std::vector<Host> const rows{host("leaf1", 10, Vex::U64{0}, ipCell("10.0.0.1")),
                                 host("leaf2", 20, Vex::U64{7}, ipCell("10.0.0.22"))};
    EXPECT_EQ(wide(rows, allHostColumns, {.isTerminal = true, .width = 30}),
              "Name   VNI  Mac Address\n"
              "    Moves  IP Address\n"
              "leaf1  10   0200.0000.0001\n"
              "        0  10.0.0.1\n"
              "leaf2  20   0200.0000.0001\n"
              "        7  10.0.0.22\n");
}

TEST(Wide, ARowThatJustFitsIsOneLine) {
    EXPECT_EQ(wide({host("leaf1")}, {0, 1}, {.width = 10}), "Name   VNI\nleaf1  10\n");
    EXPECT_EQ(wide({host("leaf1")}, {0, 1}, {.width = 9}), "Name\n    VNI\nleaf1\n    10\n");
}

TEST(Wide, ACellWiderThanTheTerminalIsNotCut) {
    EXPECT_EQ(wide({host("a long name", 10)}, {0, 1}, {.width = 5}),
              "Name\n    VNI\na long name\n    10\n");
}

} // namespace vxshow::test
