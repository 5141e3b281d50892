#include "tests/unit/VxlanController/Fabric.h"
#include "tests/unit/VxlanController/Rendered.h"

#include <gtest/gtest.h>

#include <algorithm>

TEST(ReceivedText, AnEmptyStateIsTwoHeadersAndTwoTotals) {
    EXPECT_EQ(receivedText(Fabric()),
              "         Received Mac Address Table\n"
              "---------------------------------------------------------------------\n"
              "\n"
              "Source            VNI         Mac Address       VTEP            Moves\n"
              "----------------- ----------- ----------------- --------------- -----\n"
              "Total Mac Addresses for this criterion: 0\n"
              "\n"
              "         Received Flood Table\n"
              "---------------------------------------------------------------------\n"
              "\n"
              "Source            VNI         Mac Address       VTEP\n"
              "----------------- ----------- ----------------- ---------------------\n"
              "Total Mac Addresses for this criterion: 0\n");
}

TEST(ReceivedText, ShowsSwitchesThenOtherSourcesWithOneTotalOverBoth) {
    Fabric fabric;
    fabric.unicast("leaf2", 10, "00:1c:73:0a:0b:0c", "10.0.0.2", 3)
        .unicast("leaf1", 4098, "02:00:00:00:00:02", "10.0.0.1")
        .unicast("leaf1", 10, "02:00:00:00:00:01", "10.0.0.1")
        .unicast("HSC", 10, "02:00:00:00:00:09", "192.168.100.200", 12)
        .host(10, "02:00:00:00:00:0e", "10.8.0.1")
        .flood("leaf1", 10, "00:00:00:00:00:00", {"10.0.0.2", "10.0.0.1"})
        .multipath("leaf1", 10, "02:00:00:00:00:05", {"10.0.0.4", "10.0.0.3"})
        .floodVtep(10, "10.8.0.2")
        .floodVtep(10, "10.8.0.1");
    EXPECT_EQ(receivedText(fabric),
              "         Received Mac Address Table\n"
              "---------------------------------------------------------------------\n"
              "\n"
              "Source            VNI         Mac Address       VTEP            Moves\n"
              "----------------- ----------- ----------------- --------------- -----\n"
              "leaf1             10          0200.0000.0001  10.0.0.1            0\n"
              "leaf1             4098        0200.0000.0002  10.0.0.1            0\n"
              "leaf2             10          001c.730a.0b0c  10.0.0.2            3\n"
              "EVPN              10          0200.0000.000e  10.8.0.1            0\n"
              "HSC               10          0200.0000.0009  192.168.100.200    12\n"
              "Total Mac Addresses for this criterion: 5\n"
              "\n"
              "         Received Flood Table\n"
              "---------------------------------------------------------------------\n"
              "\n"
              "Source            VNI         Mac Address       VTEP\n"
              "----------------- ----------- ----------------- ---------------------\n"
              "leaf1             10          0200.0000.0005  10.0.0.3       \n"
              "leaf1             10          0200.0000.0005  10.0.0.4       \n"
              "leaf1             10          0000.0000.0000  10.0.0.1       \n"
              "leaf1             10          0000.0000.0000  10.0.0.2       \n"
              "EVPN              10          0000.0000.0000  10.8.0.1       \n"
              "EVPN              10          0000.0000.0000  10.8.0.2       \n"
              "Total Mac Addresses for this criterion: 6\n");
}

namespace {

std::string ucastRows(Fabric const & fabric, MacFilter const & filter = {}) {
    return sectionRows(receivedText(fabric, filter), "Received Mac Address Table");
}

std::string floodRows(Fabric const & fabric, MacFilter const & filter = {}) {
    return sectionRows(receivedText(fabric, filter), "Received Flood Table");
}

} // namespace

TEST(ReceivedText, AMultipathEntryTakesOneLinePerVtepAndCountsEach) {
    Fabric fabric;
    fabric.multipath("leaf1", 10, "02:00:00:00:00:01", {"10.0.0.2", "10.0.0.10", "10.0.0.1"});
    EXPECT_EQ(floodRows(fabric), "leaf1             10          0200.0000.0001  10.0.0.1       \n"
                                 "leaf1             10          0200.0000.0001  10.0.0.2       \n"
                                 "leaf1             10          0200.0000.0001  10.0.0.10      \n"
                                 "Total Mac Addresses for this criterion: 3\n");
}

TEST(ReceivedText, AMacInBothFloodTablesIsPrintedFromBoth) {
    Fabric fabric;
    fabric.flood("leaf1", 10, "02:00:00:00:00:01", {"10.0.0.9"})
        .multipath("leaf1", 10, "02:00:00:00:00:01", {"10.0.0.1"});
    EXPECT_EQ(floodRows(fabric), "leaf1             10          0200.0000.0001  10.0.0.1       \n"
                                 "leaf1             10          0200.0000.0001  10.0.0.9       \n"
                                 "Total Mac Addresses for this criterion: 2\n");
}

TEST(ReceivedText, AnEntryWithoutVtepsPrintsAndCountsNothing) {
    Fabric fabric;
    fabric.flood("leaf1", 10, "02:00:00:00:00:01", {})
        .multipath("leaf1", 10, "02:00:00:00:00:02", {});
    EXPECT_EQ(floodRows(fabric), "Total Mac Addresses for this criterion: 0\n");
}

TEST(ReceivedText, TheDottedFlagChangesTheVniColumn) {
    Fabric fabric;
    fabric.unicast("leaf1", 4098, "02:00:00:00:00:01", "10.0.0.1")
        .flood("leaf1", 16777215, "02:00:00:00:00:01", {"10.0.0.1"});
    MacFilter const dotted{.dotted = true};
    EXPECT_EQ(ucastRows(fabric, dotted),
              "leaf1             0.16.2      0200.0000.0001  10.0.0.1            0\n"
              "Total Mac Addresses for this criterion: 1\n");
    EXPECT_EQ(floodRows(fabric, dotted),
              "leaf1             255.255.255 0200.0000.0001  10.0.0.1       \n"
              "Total Mac Addresses for this criterion: 1\n");
}

TEST(ReceivedText, AMoveCountOfMoreThanFiveDigitsWidensItsRow) {
    Fabric fabric;
    fabric.unicast("leaf1", 10, "02:00:00:00:00:01", "10.0.0.1", 1234567);
    EXPECT_EQ(ucastRows(fabric),
              "leaf1             10          0200.0000.0001  10.0.0.1        1234567\n"
              "Total Mac Addresses for this criterion: 1\n");
}

TEST(ReceivedText, AMoveCountAbove2147483647IsNegative) {
    Fabric fabric;
    fabric.unicast("leaf1", 10, "02:00:00:00:00:01", "10.0.0.1", 4294967295);
    EXPECT_EQ(ucastRows(fabric),
              "leaf1             10          0200.0000.0001  10.0.0.1           -1\n"
              "Total Mac Addresses for this criterion: 1\n");
}

TEST(ReceivedText, ALongNameWidensItsRow) {
    Fabric fabric;
    fabric.unicast("a-switch-with-a-long-name", 10, "02:00:00:00:00:01", "10.0.0.1");
    EXPECT_EQ(ucastRows(fabric),
              "a-switch-with-a-long-name 10          0200.0000.0001  10.0.0.1            0\n"
              "Total Mac Addresses for this criterion: 1\n");
}

TEST(ReceivedText, ARowOfMoreThan1023BytesIsCutWithItsLineEnd) {
    std::string const name(1200, 'x');
    Fabric fabric;
    fabric.unicast(name.c_str(), 10, "02:00:00:00:00:01", "10.0.0.1")
        .flood(name.c_str(), 10, "02:00:00:00:00:01", {"10.0.0.1", "10.0.0.2"});
    std::string const cut(1023, 'x');
    EXPECT_EQ(ucastRows(fabric), cut + "Total Mac Addresses for this criterion: 1\n");
    EXPECT_EQ(floodRows(fabric), cut + cut + "Total Mac Addresses for this criterion: 2\n");
}

TEST(ReceivedText, ARowIsCutWithinItsLastColumns) {
    std::string const name(975, 'x');
    Fabric fabric;
    fabric.unicast(name.c_str(), 10, "02:00:00:00:00:01", "10.0.0.1", 7)
        .flood(name.c_str(), 10, "02:00:00:00:00:01", {"10.0.0.1"});
    EXPECT_EQ(ucastRows(fabric), name + " 10          0200.0000.0001  10.0.0.1           "
                                        "Total Mac Addresses for this criterion: 1\n");
    EXPECT_EQ(floodRows(fabric), name + " 10          0200.0000.0001  10.0.0.1       \n"
                                        "Total Mac Addresses for this criterion: 1\n");
}

TEST(ReceivedText, ANameWithPercentSignsIsPrintedUnchanged) {
    Fabric fabric;
    fabric.unicast("%s%n%1000d", 10, "02:00:00:00:00:01", "10.0.0.1")
        .multipath("%s%n%1000d", 10, "02:00:00:00:00:01", {"10.0.0.1"});
    EXPECT_EQ(ucastRows(fabric),
              "%s%n%1000d        10          0200.0000.0001  10.0.0.1            0\n"
              "Total Mac Addresses for this criterion: 1\n");
    EXPECT_EQ(floodRows(fabric), "%s%n%1000d        10          0200.0000.0001  10.0.0.1       \n"
                                 "Total Mac Addresses for this criterion: 1\n");
}

TEST(ReceivedText, IsOrderedByNameThenVniNumberThenMac) {
    Fabric fabric;
    for (char const * source : {"leaf2", "leaf10", "Leaf"}) {
        for (Vex::U32 vni : {65536U, 4096U, 9U}) {
            fabric.unicast(source, vni, "ff:00:00:00:00:00", "10.0.0.1")
                .unicast(source, vni, "02:00:00:00:00:00", "10.0.0.1");
        }
    }
    std::string order;
    std::string const text = ucastRows(fabric);
    for (std::size_t at = 0; text.compare(at, 5, "Total") != 0; at = text.find('\n', at) + 1) {
        order += text.substr(at, 32) + "\n";
    }
    EXPECT_EQ(order, "Leaf              9           02\nLeaf              9           ff\n"
                     "Leaf              4096        02\nLeaf              4096        ff\n"
                     "Leaf              65536       02\nLeaf              65536       ff\n"
                     "leaf10            9           02\nleaf10            9           ff\n"
                     "leaf10            4096        02\nleaf10            4096        ff\n"
                     "leaf10            65536       02\nleaf10            65536       ff\n"
                     "leaf2             9           02\nleaf2             9           ff\n"
                     "leaf2             4096        02\nleaf2             4096        ff\n"
                     "leaf2             65536       02\nleaf2             65536       ff\n");
}
