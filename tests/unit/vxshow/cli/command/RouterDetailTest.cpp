#include "tests/unit/vxshow/Answers.h"

#include <gtest/gtest.h>

namespace {

Asked const routerDetail({"router", "detail"}, snapshotWith("routers", R"({
  "status": {
    "prod": {
      "ports": {
        "2001:db8::1/64": { "vni": 4098, "mac": "02:00:00:00:00:0a" },
        "10.1.2.3/24": { "vni": 4098, "mac": "02:00:00:00:00:0a", "vtep": "10.0.0.1" },
        "10.1.2.3/8": { "vni": 16777215, "mac": "0200.0000.000b", "vtep": "2001:db8::9" } },
      "uplinks": {
        "10.9.0.1/31": { "mac": "02:00:00:00:00:0c", "vtep": "10.0.0.1", "ports": [
          { "port": "Ethernet5", "vlan": 10000 }, { "port": "Ethernet3", "vlan": 10000 },
          { "port": "Ethernet1", "vlan": 10000 }, { "port": "Ethernet4", "vlan": 10000 },
          { "port": "Ethernet2", "vlan": 10000 } ] },
        "10.9.0.3/31": { "mac": "02:00:00:00:00:0d" } } },
    "dmz": {
      "uplinks": {
        "2001:db8::f/127": { "mac": "02:00:00:00:00:0e", "vtep": "10.0.0.2",
                             "ports": [ { "port": "Ethernet1", "vlan": 7 } ] } } },
    "empty": {} },
  "published": {
    "00:1c:73:00:00:02": { "vxlancontroller/version2/logicalRouter/prod": "Vxlan" },
    "00:1c:73:00:00:01": { "vxlancontroller/version2/logicalRouter/prod": "Vxlan" } },
  "vteps": { "10.0.0.1": { "active": true } },
  "switches": { "00:1c:73:00:00:01": { "vteps": [ "10.0.0.1" ] },
                "00:1c:73:00:00:02": { "vteps": [ "10.0.0.1" ] } } })"));

constexpr char const * routerDetailRule =
    "--------------------------------------------------------------------------------\n";
std::string const routerDetailHead =
    routerDetailRule +
    std::string("Name                                              IP Address         VNI") +
    "        \n" + routerDetailRule;
std::string const uplinks =
    "Uplink ports:\n" +
    (routerDetailRule + std::string("Name        IP Address         Switch            Vlan Ports") +
     "                         \n" + routerDetailRule);
constexpr char const * prodPorts =
    "prod                                              10.1.2.3/8         16777215   \n"
    "                                                  10.1.2.3/24        4098       \n"
    "                                                  2001:db8::1/64     4098       \n";
constexpr char const * dmzUplinks =
    "dmz         2001:db8::f/127                      7    Ethernet1                     \n";
constexpr char const * prodUplinks =
    "prod        10.9.0.1/31        00:1c:73:00:00:01 1000 Ethernet1, Ethernet2,         \n"
    "                                                      Ethernet3, Ethernet4,         \n"
    "                                                      Ethernet5                     \n";

std::string routerDetailTotal(int count) {
    return "\nTotal entries for this criterion: " + std::to_string(count) + "\n\n";
}

} // namespace

TEST(RouterDetail, ListsThePortsAndUplinksOfEachRouter) {
    EXPECT_EQ(routerDetail.listing({}), routerDetailHead + prodPorts + routerDetailTotal(3) +
                                            uplinks + dmzUplinks + prodUplinks +
                                            routerDetailTotal(3));
}

TEST(RouterDetail, ListsAsTheSameJsonInEachRevision) {
    std::string const expected =
        R"({"router":{"prod":{"ipPort":{)"
        R"("10.1.2.3/8":{"vni":16777215,"mac":"02:00:00:00:00:0b","vtepIp":"2001:db8::9"},)"
        R"("10.1.2.3/24":{"vni":4098,"mac":"02:00:00:00:00:0a","vtepIp":"10.0.0.1"},)"
        R"("2001:db8::1/64":{"vni":4098,"mac":"02:00:00:00:00:0a","vtepIp":""}},)"
        R"("uplinkPort":{)"
        R"("10.9.0.1/31":{"vlan":10000,"mac":"02:00:00:00:00:0c",)"
        R"("switchId":"00:1c:73:00:00:01","vtepIp":"10.0.0.1",)"
        R"("ports":["Ethernet1","Ethernet2","Ethernet3","Ethernet4","Ethernet5"]},)"
        R"("10.9.0.3/31":{"vlan":0,"mac":"02:00:00:00:00:0d",)"
        R"("switchId":"00:1c:73:00:00:01","vtepIp":"","ports":[]}}}}})"
        "\n";
    EXPECT_EQ(routerDetail.listing({"--json", "--router", "prod"}), expected);
    EXPECT_EQ(routerDetail.listing({"--json", "--revision", "1", "--dotted", "--router", "prod"}),
              expected);
}

TEST(RouterDetail, DottedShowsVnisAsThreeBytesInText) {
    EXPECT_EQ(routerDetail.listing({"--dotted", "--router", "prod"}),
              routerDetailHead +
                  "prod                                              10.1.2.3/8         "
                  "255.255.255\n"
                  "                                                  10.1.2.3/24        "
                  "0.16.2     \n"
                  "                                                  2001:db8::1/64     "
                  "0.16.2     \n" +
                  routerDetailTotal(3) + uplinks + prodUplinks + routerDetailTotal(2));
}

TEST(RouterDetail, ListsTheExample) {
    EXPECT_EQ(
        answer(exampleFabric(), {"router", "detail", "--router", "prod"}),
        routerDetailHead +
            "prod                                              192.0.2.1/24       10         \n"
            "                                                  203.0.113.1/24     30         \n"
            "                                                  2001:db8:10::1/64  10         \n" +
            routerDetailTotal(3) + uplinks +
            "prod        10.255.1.1/28      00:00:5e:00:53:e1 101  Ethernet49/1, Ethernet49/2,   \n"
            "                                                      Ethernet49/3, Ethernet49/4,   \n"
            "                                                      Ethernet50/1                  \n"
            "            2001:db8:ff:1::1/6 00:00:5e:00:53:e1 101  Ethernet49/1, Ethernet49/2    "
            "\n" +
            routerDetailTotal(2));
}

TEST(RouterDetail, AFilterThatMatchesNothingIsNotAnError) {
    std::string const nothing =
        routerDetailHead + routerDetailTotal(0) + uplinks + routerDetailTotal(0);
    EXPECT_EQ(routerDetail.listing({"--router", "empty"}), nothing);
    EXPECT_EQ(routerDetail.listing({"--json", "--router", "empty"}),
              "{\"router\":{\"empty\":{\"ipPort\":{},\"uplinkPort\":{}}}}\n");
    EXPECT_EQ(routerDetail.listing({"--router", ""}), routerDetail.listing({}));
}

TEST(RouterDetail, ARouterThatTheStateDoesNotHaveIsReported) {
    std::string const nothing =
        routerDetailHead + routerDetailTotal(0) + uplinks + routerDetailTotal(0);
    for (std::string const name : {"Prod", "pro", "prod ", "prof"}) {
        auto const [out, line] = routerDetail.unknownName({"--router", name});
        EXPECT_EQ(out, nothing);
        EXPECT_EQ(line, "--router: no router is named \"" + name + "\"; did you mean prod?");
    }
    auto const [out, line] = routerDetail.unknownName({"--json", "--router", "other"});
    EXPECT_EQ(out, "{\"router\":{}}\n");
    EXPECT_EQ(line, "--router: no router is named \"other\"");
}

TEST(RouterDetail, AbsentStateIsAnEmptyTable) {
    for (auto const & state : {snapshotWith("received", "{}"), snapshotWith("routers", "{}"),
                               snapshotWith("routers", R"({"published":{},"vteps":{}})")}) {
        EXPECT_EQ(answer(state, {"router", "detail"}),
                  routerDetailHead + routerDetailTotal(0) + uplinks + routerDetailTotal(0));
        EXPECT_EQ(answer(state, {"--json", "router", "detail"}), "{\"router\":{}}\n");
    }
}

TEST(RouterDetail, WithoutSwitchInformationItNamesNoSwitch) {
    auto const state = snapshotWith("routers", R"({"status":{"prod":{"uplinks":{"10.9.0.1/31":
        {"mac":"02:00:00:00:00:0c","ports":[{"port":"Ethernet1","vlan":7}]}}}},
        "published":{"00:1c:73:00:00:01":
        {"vxlancontroller/version2/logicalRouter/prod":"Vxlan"}}})");
    EXPECT_EQ(answer(state, {"router", "detail"}),
              routerDetailHead + routerDetailTotal(0) + uplinks +
                  "prod        10.9.0.1/31                          7    "
                  "Ethernet1                     \n" +
                  routerDetailTotal(1));
}

TEST(RouterDetail, RefusesUnknownOptions) {
    EXPECT_EQ(routerDetail.refusedFilter({"--router"}), "--router: no value; expected NAME");
    routerDetail.knowsNone({"--vni", "--prefix", "--switch", "--vtep"});
}
