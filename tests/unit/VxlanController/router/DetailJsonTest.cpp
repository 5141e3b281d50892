#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/router/RouterState.h"
#include "tests/unit/platform/outfmt/JsonReader.h"

#include <gtest/gtest.h>

using namespace std::string_literals;
using outfmt::test::Json;
using outfmt::test::readJson;

TEST(DetailJson, AnEmptyStateIsAnEmptyDictionary) {
    EXPECT_EQ(detailJson(RouterState()), "{\"router\":{}}\n");
}

TEST(DetailJson, ARouterWithoutPortsIsListed) {
    RouterState state;
    state.router("red");
    EXPECT_EQ(detailJson(state), "{\"router\":{\"red\":{\"ipPort\":{},\"uplinkPort\":{}}}}\n");
}

TEST(DetailJson, ShowsPortsAndUplinksByAddress) {
    RouterState state;
    state.leaf(leafOne, {"10.9.0.1"}, {"red"})
        .port("red", "10.0.2.1/24", 16777215, "02:00:00:00:00:12", "10.9.0.2")
        .port("red", "10.0.1.1/24", 10, "00:1C:73:0A:0B:0C", "10.9.0.1")
        .uplink("red", "10.1.0.1/31", {{"Ethernet2", 4094}, {"Ethernet1", 4094}},
                "00:1C:73:0A:0B:0D", "2001:db8::1234:5678");
    EXPECT_EQ(rendered(detailCommand(state), 3), R"({
  "router": {
    "red": {
      "ipPort": {
        "10.0.1.1/24": {
          "vni": 10,
          "mac": "00:1c:73:0a:0b:0c",
          "vtepIp": "10.9.0.1"
        },
        "10.0.2.1/24": {
          "vni": 16777215,
          "mac": "02:00:00:00:00:12",
          "vtepIp": "10.9.0.2"
        }
      },
      "uplinkPort": {
        "10.1.0.1/31": {
          "vlan": 4094,
          "mac": "00:1c:73:0a:0b:0d",
          "switchId": "02:00:00:00:00:01",
          "vtepIp": "2001:db8::1234:5678",
          "ports": [
            "Ethernet1",
            "Ethernet2"
          ]
        }
      }
    }
  }
}
)");
}

TEST(DetailJson, AVniIsANumberWhetherDottedOrNot) {
    RouterState state;
    state.port("red", "10.0.0.1/24", 4098);
    EXPECT_EQ(detailJson(state, {.dotted = true}), detailJson(state));
    EXPECT_EQ(detailJson(state, {.dotted = true}),
              R"({"router":{"red":{"ipPort":{"10.0.0.1/24":{"vni":4098,)"
              R"("mac":"00:00:00:00:00:00","vtepIp":""}},"uplinkPort":{}}}})"
              "\n");
}

TEST(DetailJson, AnUplinkWithoutPortsHasVlanZeroAndAnEmptyList) {
    RouterState state;
    state.uplink("red", "10.1.0.1/24", {});
    EXPECT_EQ(detailJson(state), R"({"router":{"red":{"ipPort":{},"uplinkPort":{"10.1.0.1/24":{)"
                                 R"("vlan":0,"mac":"00:00:00:00:00:00","switchId":"",)"
                                 R"("vtepIp":"","ports":[]}}}}})"
                                 "\n");
}

TEST(DetailJson, PortsAreOrderedByByteAndListedOnce) {
    RouterState state;
    state.uplink("red", "10.1.0.1/24",
                 {{"Et2", 7}, {"Et10", 7}, {"et1", 7}, {"Et2", 8}, {"Et3", 7}, {"Et10", 9}});
    std::string const json = detailJson(state);
    EXPECT_NE(json.find(R"("ports":["Et10","Et2","Et3","et1"])"), json.npos) << json;
}

TEST(DetailJson, RoutersAreOrderedByNameAndNothingIsCut) {
    std::string const name(60, 'r');
    RouterState state;
    state.router("b").router(name).router("B").port("b", "2001:db8:1111:2222::3333:4444/64", 1);
    EXPECT_EQ(detailJson(state), R"({"router":{"B":{"ipPort":{},"uplinkPort":{}},)"
                                 R"("b":{"ipPort":{"2001:db8:1111:2222::3333:4444/64":{"vni":1,)"
                                 R"("mac":"00:00:00:00:00:00","vtepIp":""}},"uplinkPort":{}},")" +
                                     name + R"(":{"ipPort":{},"uplinkPort":{}}}})" + "\n");
}

TEST(DetailJson, EscapesNames) {
    RouterState state;
    state.uplink("%s \"a\" \\ \0\x1b\xc3\xbc\xff"s, "10.1.0.1/24", {{"\"1\"\n", 7}});
    Json const uplink = Json::object({{"vlan", {Json::Kind::number, "7", {}}},
                                      {"mac", Json::string("00:00:00:00:00:00")},
                                      {"switchId", Json::string("")},
                                      {"vtepIp", Json::string("")},
                                      {"ports", Json::list({Json::string("\"1\"\n")})}});
    Json const router = Json::object(
        {{"ipPort", Json::object()}, {"uplinkPort", Json::object({{"10.1.0.1/24", uplink}})}});
    EXPECT_EQ(
        readJson(detailJson(state)),
        Json::object(
            {{"router", Json::object({{"%s \"a\" \\ \0\x1b\xc3\xbc\xef\xbf\xbd"s, router}})}}));
}
