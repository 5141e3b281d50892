#include "tests/unit/VxlanController/AdvertisedFabric.h"

#include <gtest/gtest.h>

TEST(AdvertisedText, AnEmptyStateIsTwoHeadersAndTwoTotals) {
    EXPECT_EQ(advertisedText(AdvertisedFabric()),
              "            Advertised Mac Address Table\n"
              "-----------------------------------------------------------------------------\n"
              "\n"
              "VNI         Mac Address       VTEP            Moves\n"
              "----------- ----------------- --------------- -----\n"
              "Total Mac Addresses for this criterion: 0\n"
              "\n"
              "            Advertised Flood Table\n"
              "---------------------------------------------------\n"
              "\n"
              "VNI         Mac Address       VTEP(s)\n"
              "----------- ----------------- -----------------------------------------------\n"
              "Total Mac Addresses for this criterion: 0\n");
}

namespace {

std::string ucastRows(AdvertisedFabric const & fabric, MacFilter const & filter = {}) {
    return sectionRows(advertisedText(fabric, filter), "Advertised Mac Address Table");
}

std::string floodRows(AdvertisedFabric const & fabric, MacFilter const & filter = {}) {
    return sectionRows(advertisedText(fabric, filter), "Advertised Flood Table");
}

} // namespace

TEST(AdvertisedText, ShowsOneRowPerMacOrderedByVniNumberAndMac) {
    AdvertisedFabric fabric;
    addUnicast(fabric.entry("65536"), "02:00:00:00:00:01", "10.0.0.1");
    addUnicast(fabric.entry("4096"), "02:00:00:00:00:02", "192.168.100.200", 1234567);
    addUnicast(fabric.entry("4096"), "00:1c:73:0a:0b:0c", "10.0.0.2", 3);
    EXPECT_EQ(ucastRows(fabric), "4096        001c.730a.0b0c  10.0.0.2            3\n"
                                 "4096        0200.0000.0002  192.168.100.200 1234567\n"
                                 "65536       0200.0000.0001  10.0.0.1            0\n"
                                 "Total Mac Addresses for this criterion: 3\n");
}

TEST(AdvertisedText, TheDottedFlagChangesTheVniColumn) {
    AdvertisedFabric fabric;
    addUnicast(fabric.entry("4098"), "02:00:00:00:00:01", "10.0.0.1");
    EXPECT_EQ(ucastRows(fabric, {.dotted = true}),
              "0.16.2      0200.0000.0001  10.0.0.1            0\n"
              "Total Mac Addresses for this criterion: 1\n");
}

TEST(AdvertisedText, AnEntryOfSevenVtepsTakesThreeLinesAndCountsOnce) {
    AdvertisedFabric fabric;
    addFlood(fabric.entry("10"), "02:00:00:00:00:01",
             {"10.0.0.7", "10.0.0.1", "10.0.0.2", "10.0.0.3", "10.0.0.4", "10.0.0.5", "10.0.0.6"});
    EXPECT_EQ(floodRows(fabric),
              "10          0200.0000.0001  10.0.0.1        10.0.0.2        10.0.0.3       \n"
              "                              10.0.0.4        10.0.0.5        10.0.0.6       \n"
              "                              10.0.0.7       \n"
              "Total Mac Addresses for this criterion: 1\n");
}

TEST(AdvertisedText, AnEntryOfThreeOrSixVtepsEndsWithoutAnEmptyLine) {
    AdvertisedFabric fabric;
    addFlood(fabric.entry("10"), "02:00:00:00:00:01", {"10.0.0.1", "10.0.0.2", "10.0.0.3"});
    addMultipath(fabric.entry("10"), "02:00:00:00:00:02",
                 {"10.0.0.1", "10.0.0.2", "10.0.0.3", "10.0.0.4", "10.0.0.5", "10.0.0.6"});
    EXPECT_EQ(floodRows(fabric),
              "10          0200.0000.0002  10.0.0.1        10.0.0.2        10.0.0.3       \n"
              "                              10.0.0.4        10.0.0.5        10.0.0.6       \n"
              "10          0200.0000.0001  10.0.0.1        10.0.0.2        10.0.0.3       \n"
              "Total Mac Addresses for this criterion: 2\n");
}

TEST(AdvertisedText, AnEntryWithoutVtepsTakesALineAndCountsOnce) {
    AdvertisedFabric fabric;
    addFlood(fabric.entry("10"), "02:00:00:00:00:01", {});
    EXPECT_EQ(floodRows(fabric), "10          0200.0000.0001 \n"
                                 "Total Mac Addresses for this criterion: 1\n");
}

TEST(AdvertisedText, AFloodListWhoseMacHasAMultipathEntryIsPrintedOnce) {
    AdvertisedFabric fabric;
    addFlood(fabric.entry("10"), "02:00:00:00:00:01", {"10.0.0.9"});
    addMultipath(fabric.entry("10"), "02:00:00:00:00:01", {"10.0.0.1", "10.0.0.2"});
    std::string const once = "10          0200.0000.0001  10.0.0.1        10.0.0.2       \n"
                             "Total Mac Addresses for this criterion: 1\n";
    EXPECT_EQ(floodRows(fabric), once);
    // Collected under a MAC filter, the flood list is still not printed again.
    EXPECT_EQ(floodRows(fabric, {.mac = "02:00:00:00:00:01"}), once);
}
