#include "tests/unit/VxlanController/AdvertisedFabric.h"

#include <gtest/gtest.h>

TEST(AdvertisedJson, AnEmptyStateIsAnEmptyList) {
    EXPECT_EQ(advertisedJson(AdvertisedFabric()), "{\"vniInDottedNotation\":false,\"vnis\":[]}\n");
}

TEST(AdvertisedJson, ShowsVnisInNumericOrderWithoutASourceLevel) {
    AdvertisedFabric fabric;
    addUnicast(fabric.entry("65536"), "02:00:00:00:00:01", "10.0.0.1", 4294967295);
    addMultipath(fabric.entry("4098"), "02:00:00:00:00:05", {"10.0.0.4", "10.0.0.3"});
    EXPECT_EQ(advertisedJson(fabric, {.dotted = true}),
              R"({"vniInDottedNotation":true,"vnis":[)"
              R"({"macAddress":"00:00:00:00:00:00","vni":4098,"unicastHostTable":[],)"
              R"("bumVtepListTable":[{"vtepIpListType":"sendToAny",)"
              R"("macAddr":"02:00:00:00:00:05","vtepIpList":["10.0.0.3","10.0.0.4"]}]},)"
              R"({"macAddress":"00:00:00:00:00:00","vni":65536,"unicastHostTable":[)"
              R"({"macAddr":"02:00:00:00:00:01","vtepIp":"10.0.0.1","moveCount":-1}],)"
              R"("bumVtepListTable":[]}]})"
              "\n");
}

TEST(AdvertisedJson, OnlyRevision1HasTimeLearned) {
    AdvertisedFabric fabric;
    addUnicast(fabric.entry("10"), "02:00:00:00:00:01", "10.0.0.1", 5);
    std::string const with = R"("vtepIp":"10.0.0.1","timeLearned":0,"moveCount":5)";
    EXPECT_NE(advertisedJson(fabric, {}, 1).find(with), std::string::npos);
    EXPECT_EQ(advertisedJson(fabric, {}, 2).find("timeLearned"), std::string::npos);
}

TEST(AdvertisedJson, AMacCollectedFromBothFloodTablesIsListedTwice) {
    AdvertisedFabric fabric;
    addFlood(fabric.entry("10"), "02:00:00:00:00:01", {"10.0.0.9"});
    addMultipath(fabric.entry("10"), "02:00:00:00:00:01", {"10.0.0.1"});
    std::string const any = R"({"vtepIpListType":"sendToAny","macAddr":"02:00:00:00:00:01",)"
                            R"("vtepIpList":["10.0.0.1"]})";
    std::string const all = R"({"vtepIpListType":"sendToAll","macAddr":"02:00:00:00:00:01",)"
                            R"("vtepIpList":["10.0.0.9"]})";
    EXPECT_NE(advertisedJson(fabric, {.mac = "02:00:00:00:00:01"})
                  .find("\"bumVtepListTable\":[" + any + "," + all + "]"),
              std::string::npos);
    // In the listing of all MACs the flood list has not been collected.
    EXPECT_NE(advertisedJson(fabric).find("\"bumVtepListTable\":[" + any + "]"), std::string::npos);
}
