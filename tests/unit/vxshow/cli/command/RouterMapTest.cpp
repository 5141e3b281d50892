#include "tests/unit/vxshow/Answers.h"

#include <gtest/gtest.h>
#include <tuple>

namespace {

/// Two switches, the second of which also has a VTEP that is out of service; a VTEP listed for
/// both; and a third switch that publishes but has no VTEP.
Asked const routerMap({"router", "map"}, snapshotWith("routers", R"({
  "switches": {
    "00:1c:73:00:00:01": { "vteps": [ "10.0.0.1" ] },
    "00:1c:73:00:00:02": { "vteps": [ "10.0.0.9", "2001:db8:aaaa:bbbb::2" ] },
    "00:1c:73:00:00:03": {} },
  "vteps": {
    "10.0.0.1": { "active": true, "switches": [ "00:1c:73:00:00:01", "00:1c:73:00:00:08" ] },
    "10.0.0.9": { "active": false,
                  "switches": [ "00:1c:73:00:00:01", "00:1c:73:00:00:02" ] },
    "2001:db8:aaaa:bbbb::2": { "active": true, "switches": [ "00:1c:73:00:00:02" ] } },
  "published": {
    "00:1c:73:00:00:01": { "vxlancontroller/version2/logicalRouter/prod": "Vxlan",
                           "vxlancontroller/version2/logicalRouter/other": "vxlan",
                           "vxlancontroller/version1/logicalRouter/old": "Vxlan" },
    "001c.7300.0002": { "vxlancontroller/version2/logicalRouter/prod": "Vxlan",
                        "vxlancontroller/version2/logicalRouter/dmz": "Vxlan" },
    "00:1c:73:00:00:03": { "vxlancontroller/version2/logicalRouter/prod": "Vxlan" } } })"));

constexpr char const * routerMapRule =
    "--------------------------------------------------------------------------------\n";
std::string const routerMapHead =
    routerMapRule +
    std::string("Name                                           VTEP            Switch") +
    "           \n" + routerMapRule;
constexpr char const * dmzOn2 =
    "dmz                                            2001:db8:aaaa:b 00:1c:73:00:00:02\n";
constexpr char const * prodOn1 =
    "prod                                           10.0.0.1        00:1c:73:00:00:01\n";
constexpr char const * prodOn2 =
    "prod                                           2001:db8:aaaa:b 00:1c:73:00:00:02\n";
constexpr char const * thenOn2 =
    "                                               2001:db8:aaaa:b 00:1c:73:00:00:02\n";

std::string routerMapTotal(int count) {
    return "\nTotal entries for this criterion: " + std::to_string(count) + "\n\n";
}

} // namespace

TEST(RouterMap, ListsEachRouterWithItsSwitches) {
    EXPECT_EQ(routerMap.listing({}),
              routerMapHead + dmzOn2 + prodOn1 + thenOn2 + routerMapTotal(3));
}

TEST(RouterMap, ListsAsTheSameJsonInEachRevision) {
    std::string const expected =
        R"({"logicalRouterMap":{"dmz":{"switches":[{"switchId":"00:1c:73:00:00:02",)"
        R"("vtepIp":"2001:db8:aaaa:bbbb::2"}]},"prod":{"switches":[)"
        R"({"switchId":"00:1c:73:00:00:01","vtepIp":"10.0.0.1"},)"
        R"({"switchId":"00:1c:73:00:00:02","vtepIp":"2001:db8:aaaa:bbbb::2"}]}}})"
        "\n";
    EXPECT_EQ(routerMap.listing({"--json"}), expected);
    EXPECT_EQ(routerMap.listing({"--json", "--revision", "1", "--dotted"}), expected);
}

TEST(RouterMap, ListsTheExample) {
    EXPECT_EQ(answer(exampleFabric(), {"router", "map", "--router", "storage"}),
              routerMapHead +
                  "storage                                        10.0.0.1        "
                  "00:00:5e:00:53:e1\n"
                  "                                               10.0.0.3        "
                  "00:00:5e:00:53:e3\n"
                  "                                               10.0.0.4        "
                  "00:00:5e:00:53:e4\n" +
                  routerMapTotal(3));
    EXPECT_NE(answer(exampleFabric(), {"router", "map"}).find(routerMapTotal(9)),
              std::string::npos);
}

TEST(RouterMap, AcceptsEachFilter) {
    std::string const first = routerMapHead + prodOn1 + routerMapTotal(1);
    std::string const second = routerMapHead + dmzOn2 + prodOn2 + routerMapTotal(2);
    EXPECT_EQ(routerMap.listing({"--router", "dmz"}), routerMapHead + dmzOn2 + routerMapTotal(1));
    EXPECT_EQ(routerMap.listing({"--router=prod"}),
              routerMapHead + prodOn1 + thenOn2 + routerMapTotal(2));
    EXPECT_EQ(routerMap.listing({"--switch", "00:1c:73:00:00:01"}), first);
    EXPECT_EQ(routerMap.listing({"--switch", "00:1c:73:00:00:02"}), second);
    EXPECT_EQ(routerMap.listing({"--vtep", "10.0.0.1"}), first);
    EXPECT_EQ(routerMap.listing({"--vtep", "10.0.0.1", "10.0.0.9"}), routerMap.listing({}));
    EXPECT_EQ(routerMap.listing({"--vtep", "10.0.0.1", "--vtep", "10.0.0.9"}),
              routerMap.listing({}));
    EXPECT_EQ(routerMap.listing({"--vtep", "10.0.0.1", "--router", "prod"}), first);
    EXPECT_EQ(routerMap.listing({"--router", "", "--switch", ""}), routerMap.listing({}));
}

TEST(RouterMap, VtepsBesideASwitchNarrowFurther) {
    std::string const nothing = routerMapHead + routerMapTotal(0);
    EXPECT_EQ(routerMap.listing({"--switch", "00:1c:73:00:00:02", "--vtep", "10.0.0.1"}), nothing);
    EXPECT_EQ(routerMap.listing({"--switch", "00:1c:73:00:00:02", "--vtep", "10.0.0.9"}),
              routerMap.listing({"--switch", "00:1c:73:00:00:02"}));
    EXPECT_EQ(routerMap.listing(
                  {"--switch", "00:1c:73:00:00:01,00:1c:73:00:00:02", "--vtep", "10.0.0.1"}),
              routerMapHead + prodOn1 + routerMapTotal(1));
}

TEST(RouterMap, TheSwitchIsFoundByItsAddressInAnyForm) {
    std::string const second = routerMapHead + dmzOn2 + prodOn2 + routerMapTotal(2);
    for (char const * form : {"001c.7300.0002", "00-1c-73-00-00-02", "00:1C:73:00:00:02",
                              "001c73000002", "001C73000002"}) {
        EXPECT_EQ(routerMap.listing({"--switch", form}), second) << form;
    }
}

TEST(RouterMap, TheExactIdentifierComesBeforeOtherFormsOfTheAddress) {
    auto const state = snapshotWith("routers", R"({
        "switches": { "00:1c:73:00:00:01": { "vteps": [ "10.0.0.1" ] },
                      "001c.7300.0001": { "vteps": [ "10.0.0.2" ] } },
        "vteps": { "10.0.0.1": { "active": true }, "10.0.0.2": { "active": true } },
        "published": { "00:1c:73:00:00:01": {
            "vxlancontroller/version2/logicalRouter/prod": "Vxlan" } } })");
    std::string const exact =
        R"({"logicalRouterMap":{"prod":{"switches":[{"switchId":"001c.7300.0001",)"
        R"("vtepIp":"10.0.0.2"}]}}})"
        "\n";
    std::string const both =
        R"({"logicalRouterMap":{"prod":{"switches":[{"switchId":"001c.7300.0001",)"
        R"("vtepIp":"10.0.0.2"},{"switchId":"00:1c:73:00:00:01","vtepIp":"10.0.0.1"}]}}})"
        "\n";
    EXPECT_EQ(answer(state, {"--json", "router", "map", "--switch", "001c.7300.0001"}), exact);
    EXPECT_EQ(answer(state, {"--json", "router", "map", "--switch", "001c73000001"}), both);
}

TEST(RouterMap, PatternsAndListsSelectRoutersAndSwitches) {
    EXPECT_EQ(routerMap.listing({"--router", "p*"}), routerMap.listing({"--router", "prod"}));
    EXPECT_EQ(routerMap.listing({"--router", "d?z,prod"}), routerMap.listing({}));
    EXPECT_EQ(routerMap.listing({"--router", "dmz", "--router", "prod"}), routerMap.listing({}));
    EXPECT_EQ(routerMap.listing({"--switch", "*:02"}),
              routerMap.listing({"--switch", "00:1c:73:00:00:02"}));
    EXPECT_EQ(routerMap.listing({"--switch", "00:1c:73:00:00:01,001c.7300.0002"}),
              routerMap.listing({}));
}

TEST(RouterMap, ASubnetOfVtepsSelectsTheirSwitches) {
    std::string const first = routerMapHead + prodOn1 + routerMapTotal(1);
    EXPECT_EQ(routerMap.listing({"--vtep", "10.0.0.0/30"}), first);
    EXPECT_EQ(routerMap.listing({"--vtep", "10.0.0.0/28"}), routerMap.listing({}));
    EXPECT_EQ(routerMap.listing({"--vtep", "10.0.0.1/32"}), first);
    EXPECT_EQ(routerMap.listing({"--vtep", "192.0.2.0/24"}), routerMapHead + routerMapTotal(0));
}

TEST(RouterMap, AFilterThatMatchesNothingIsNotAnError) {
    std::string const nothing = routerMapHead + routerMapTotal(0);
    for (auto const & filters : std::vector<std::vector<std::string>>{
             {"--router", "other"}, {"--switch", "00:1c:73:00:00:03"}, {"--vtep", "10.0.0.2"}}) {
        EXPECT_EQ(routerMap.listing(filters), nothing) << testing::PrintToString(filters);
    }
}

TEST(RouterMap, ANameThatTheStateDoesNotHaveIsReported) {
    std::string const nothing = routerMapHead + routerMapTotal(0);
    for (auto const & [option, name, hint] :
         std::vector<std::tuple<std::string, std::string, std::string>>{
             {"router", "Prod", "; did you mean prod?"},
             {"router", "pro", "; did you mean prod?"},
             {"router", "old", ""},
             {"switch", "00:1c:73:00:00:08", ""},
             {"switch", "leaf1", ""}}) {
        auto const [out, line] = routerMap.unknownName({"--" + option, name});
        EXPECT_EQ(out, nothing);
        EXPECT_EQ(line, "--" + option + ": no " + option + " is named \"" + name + "\"" + hint);
    }
    auto const [out, line] = routerMap.unknownName({"--switch", "leaf*"});
    EXPECT_EQ(out, nothing);
    EXPECT_EQ(line, "--switch: no switch has a name like \"leaf*\"");
    EXPECT_EQ(routerMap.unknownName({"--json", "--router", "Prod"}).out,
              "{\"logicalRouterMap\":{}}\n");
}

TEST(RouterMap, AbsentStateIsAnEmptyTable) {
    for (auto const & state :
         {snapshotWith("received", "{}"), snapshotWith("routers", "{}"),
          snapshotWith("routers", R"({"status":{"prod":{}}})"),
          snapshotWith("routers", R"({"switches":{"00:1c:73:00:00:01":{"vteps":["10.0.0.1"]}},)"
                                  R"("vteps":{"10.0.0.1":{"active":true}}})"),
          snapshotWith("routers", R"({"published":{"00:1c:73:00:00:01":)"
                                  R"({"vxlancontroller/version2/logicalRouter/a":"Vxlan"}}})")}) {
        EXPECT_EQ(answer(state, {"router", "map"}), routerMapHead + routerMapTotal(0)) << state;
        EXPECT_EQ(answer(state, {"--json", "router", "map"}), "{\"logicalRouterMap\":{}}\n");
        EXPECT_EQ(answer(state, {"router", "map", "--vtep", "10.0.0.1"}),
                  routerMapHead + routerMapTotal(0));
    }
}

TEST(RouterMap, NamesWithFormatsAndControlCharactersPrintAsTheyAre) {
    auto const state = snapshotWith("routers", R"({
        "switches": { "00:1c:73:00:00:01": { "vteps": [ "10.0.0.1" ] } },
        "vteps": { "10.0.0.1": { "active": true } },
        "published": { "00:1c:73:00:00:01": {
            "vxlancontroller/version2/logicalRouter/%s%n\u0001": "Vxlan",
            "vxlancontroller/version2/logicalRouter/": "Vxlan" } } })");
    EXPECT_EQ(answer(state, {"--json", "router", "map"}),
              R"({"logicalRouterMap":{"":{"switches":[{"switchId":"00:1c:73:00:00:01",)"
              R"("vtepIp":"10.0.0.1"}]},"%s%n\u0001":{"switches":[)"
              R"({"switchId":"00:1c:73:00:00:01","vtepIp":"10.0.0.1"}]}}})"
              "\n");
    EXPECT_NE(answer(state, {"router", "map"}).find("\n%s%n\x01    "), std::string::npos);
}

TEST(RouterMap, AStateWithAnUndescribedVtepIsRefused) {
    auto const line =
        failure(snapshotWith("routers", R"({"switches":{"leaf1":{"vteps":["10.0.0.1"]}}})"),
                {"router", "map"});
    std::string const end = "routers.switches.leaf1.vteps[0]: found \"10.0.0.1\", expected an "
                            "address that stands in \"vteps\"";
    EXPECT_NE(line.find(end), std::string::npos) << line;
}

TEST(RouterMap, RefusesInvalidValues) {
    for (char const * ip : {"2001:db8::1", "10.0.0", "leaf1", ""}) {
        EXPECT_EQ(routerMap.refusedFilter({"--vtep", ip}),
                  "--vtep: '" + std::string(ip) + "': expected an IPv4 address such as 10.0.0.1");
    }
    EXPECT_EQ(routerMap.refusedFilter({"--vtep", "10.0.0.1", "2001:db8::1"}),
              "--vtep: '2001:db8::1': expected an IPv4 address such as 10.0.0.1");
    EXPECT_EQ(routerMap.refusedFilter({"--vtep", "2001:db8::/32"}),
              "--vtep: '2001:db8::/32': expected an IPv4 subnet such as 10.0.0.0/24");
    EXPECT_EQ(routerMap.refusedFilter({"--vtep", "10.0.0.1/24"}),
              "--vtep: '10.0.0.1/24': expected 10.0.0.0/24, with no bits set beyond the prefix "
              "length");
    EXPECT_EQ(routerMap.refusedFilter({"--router"}), "--router: no value; expected NAME");
    EXPECT_EQ(routerMap.refusedFilter({"--switch", "--json"}),
              "--switch: no value; expected SWITCH");
    EXPECT_EQ(routerMap.refusedFilter({"--vtep", "[10.0.0.1]"}),
              "--vtep: '[10.0.0.1]': expected IP");
    routerMap.knowsNone({"--vni", "--prefix", "--mac", "--source"});
}
