#include "tests/unit/VxlanController/Fabric.h"
#include "tests/unit/VxlanController/Rendered.h"

#include <gtest/gtest.h>

TEST(ReceivedJson, AnEmptyStateIsTwoEmptyDictionaries) {
    EXPECT_EQ(receivedJson(Fabric()), "{\"switches\":{},\"nonSwitchSources\":{}}\n");
}

TEST(ReceivedJson, ASourceWithoutEntriesIsLeftOut) {
    Fabric fabric;
    fabric.source("leaf1").dirOf("leaf1").vniStatusV2Is(Vxlan::Vni(10));
    EXPECT_EQ(receivedJson(fabric), "{\"switches\":{},\"nonSwitchSources\":{}}\n");
}

TEST(ReceivedJson, ShowsSwitchesAndOtherSourcesByName) {
    Fabric fabric;
    fabric.unicast("leaf1", 4098, "00:1C:73:0A:0B:0C", "10.0.0.1", 3)
        .multipath("leaf1", 4098, "02:00:00:00:00:05", {"10.0.0.4", "10.0.0.3"})
        .flood("HSC", 10, "00:00:00:00:00:00", {"10.0.0.2", "10.0.0.1"})
        .host(20, "02:00:00:00:00:0e", "10.8.0.1", 1);
    EXPECT_EQ(rendered(receivedCommand(fabric), 3),
              R"({
  "switches": {
    "leaf1": {
      "vniInDottedNotation": false,
      "vnis": [
        {
          "macAddress": "00:00:00:00:00:00",
          "vni": 4098,
          "unicastHostTable": [
            {
              "macAddr": "00:1c:73:0a:0b:0c",
              "vtepIp": "10.0.0.1",
              "moveCount": 3
            }
          ],
          "bumVtepListTable": [
            {
              "vtepIpListType": "sendToAny",
              "macAddr": "02:00:00:00:00:05",
              "vtepIpList": [
                "10.0.0.3",
                "10.0.0.4"
              ]
            }
          ]
        }
      ]
    }
  },
  "nonSwitchSources": {
    "EVPN": {
      "vniInDottedNotation": false,
      "vnis": [
        {
          "macAddress": "00:00:00:00:00:00",
          "vni": 20,
          "unicastHostTable": [
            {
              "macAddr": "02:00:00:00:00:0e",
              "vtepIp": "10.8.0.1",
              "moveCount": 1
            }
          ],
          "bumVtepListTable": []
        }
      ]
    },
    "HSC": {
      "vniInDottedNotation": false,
      "vnis": [
        {
          "macAddress": "00:00:00:00:00:00",
          "vni": 10,
          "unicastHostTable": [],
          "bumVtepListTable": [
            {
              "vtepIpListType": "sendToAll",
              "macAddr": "00:00:00:00:00:00",
              "vtepIpList": [
                "10.0.0.1",
                "10.0.0.2"
              ]
            }
          ]
        }
      ]
    }
  }
}
)");
}

namespace {

/// A document with one switch, leaf1, and one VNI, 10.
std::string leaf1Vni10(std::string const & tables) {
    return R"({"switches":{"leaf1":{"vniInDottedNotation":false,"vnis":[)"
           R"({"macAddress":"00:00:00:00:00:00","vni":10,)" +
           tables + "}]}},\"nonSwitchSources\":{}}\n";
}

} // namespace

TEST(ReceivedJson, OnlyRevision1HasTimeLearned) {
    Fabric fabric;
    fabric.unicast("leaf1", 10, "02:00:00:00:00:01", "10.0.0.1", 5);
    EXPECT_EQ(receivedJson(fabric, {}, 1),
              leaf1Vni10(R"("unicastHostTable":[{"macAddr":"02:00:00:00:00:01",)"
                         R"("vtepIp":"10.0.0.1","timeLearned":0,"moveCount":5}],)"
                         R"("bumVtepListTable":[])"));
    std::string const without =
        leaf1Vni10(R"("unicastHostTable":[{"macAddr":"02:00:00:00:00:01",)"
                   R"("vtepIp":"10.0.0.1","moveCount":5}],"bumVtepListTable":[])");
    EXPECT_EQ(receivedJson(fabric, {}, 2), without);
    EXPECT_EQ(receivedJson(fabric, {}, 0), without);
}

TEST(ReceivedJson, AVniWhoseTablesAreEmptyKeepsItsEntry) {
    Fabric fabric;
    fabric.flood("leaf1", 10, "02:00:00:00:00:01", {});
    EXPECT_EQ(receivedJson(fabric),
              leaf1Vni10(R"("unicastHostTable":[],"bumVtepListTable":[)"
                         R"({"vtepIpListType":"sendToAll","macAddr":"02:00:00:00:00:01",)"
                         R"("vtepIpList":[]}])"));
}

TEST(ReceivedJson, AMacInBothFloodTablesIsListedTwiceMultipathFirst) {
    Fabric fabric;
    fabric.flood("leaf1", 10, "02:00:00:00:00:01", {"10.0.0.1"})
        .multipath("leaf1", 10, "02:00:00:00:00:01", {"10.0.0.2"})
        .multipath("leaf1", 10, "02:00:00:00:00:09", {"10.0.0.3"});
    EXPECT_EQ(receivedJson(fabric),
              leaf1Vni10(R"("unicastHostTable":[],"bumVtepListTable":[)"
                         R"({"vtepIpListType":"sendToAny","macAddr":"02:00:00:00:00:01",)"
                         R"("vtepIpList":["10.0.0.2"]},)"
                         R"({"vtepIpListType":"sendToAny","macAddr":"02:00:00:00:00:09",)"
                         R"("vtepIpList":["10.0.0.3"]},)"
                         R"({"vtepIpListType":"sendToAll","macAddr":"02:00:00:00:00:01",)"
                         R"("vtepIpList":["10.0.0.1"]}])"));
}

TEST(ReceivedJson, TheDottedFlagIsReportedAndChangesNoVni) {
    Fabric fabric;
    fabric.unicast("leaf1", 4098, "02:00:00:00:00:01", "10.0.0.1");
    std::string const document = receivedJson(fabric, {.dotted = true});
    EXPECT_NE(document.find("\"vniInDottedNotation\":true"), std::string::npos);
    EXPECT_NE(document.find("\"vni\":4098,"), std::string::npos);
    EXPECT_EQ(document.find("0.16.2"), std::string::npos);
}

TEST(ReceivedJson, AMoveCountAbove2147483647IsNegative) {
    Fabric fabric;
    fabric.unicast("leaf1", 10, "02:00:00:00:00:01", "10.0.0.1", 4294967294);
    EXPECT_NE(receivedJson(fabric).find("\"moveCount\":-2}"), std::string::npos);
}

TEST(ReceivedJson, ANameCanHoldAnyBytes) {
    Fabric fabric;
    fabric.unicast("a\"b\\\n\xff%s", 10, "02:00:00:00:00:01", "10.0.0.1");
    EXPECT_NE(receivedJson(fabric).find(R"({"switches":{"a\"b\\\n)"
                                        "\xEF\xBF\xBD%s\":{"),
              std::string::npos);
}
