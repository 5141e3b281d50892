#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/router/RouterState.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

TEST(MapText, AnEmptyStateIsAHeaderAndATotalOfZero) {
    EXPECT_EQ(mapText(RouterState()),
              "--------------------------------------------------------------------------------\n"
              "Name                                           VTEP            Switch           \n"
              "--------------------------------------------------------------------------------\n"
              "\n"
              "Total entries for this criterion: 0\n"
              "\n");
}

TEST(MapText, ARouterOnThreeSwitchesIsNamedOnItsFirstRowOnly) {
    RouterState state;
    state.leaf(leafThree, {"10.0.0.3"}, {"red"})
        .leaf(leafOne, {"10.0.0.1"}, {"red"})
        .leaf(leafTwo, {"10.0.0.2"}, {"red"});
    EXPECT_EQ(mapBody(state),
              "red                                            10.0.0.1        02:00:00:00:00:01\n"
              "                                               10.0.0.2        02:00:00:00:00:02\n"
              "                                               10.0.0.3        02:00:00:00:00:03\n"
              "\n"
              "Total entries for this criterion: 3\n"
              "\n");
}

TEST(MapText, ASwitchWithTwoRoutersHasARowUnderEachAndCountsTwice) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"red", "blue"}).leaf(leafTwo, {"10.0.0.2"}, {"red"});
    EXPECT_EQ(mapBody(state),
              "blue                                           10.0.0.1        02:00:00:00:00:01\n"
              "red                                            10.0.0.1        02:00:00:00:00:01\n"
              "                                               10.0.0.2        02:00:00:00:00:02\n"
              "\n"
              "Total entries for this criterion: 3\n"
              "\n");
}

TEST(MapText, RoutersAreOrderedByByte) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"b", "a", "B", "a10", "a2", "\xc3\xbc"});
    EXPECT_EQ(
        mapBody(state),
        "B                                              10.0.0.1        02:00:00:00:00:01\n"
        "a                                              10.0.0.1        02:00:00:00:00:01\n"
        "a10                                            10.0.0.1        02:00:00:00:00:01\n"
        "a2                                             10.0.0.1        02:00:00:00:00:01\n"
        "b                                              10.0.0.1        02:00:00:00:00:01\n"
        "\303\274                                             10.0.0.1        02:00:00:00:00:01\n"
        "\n"
        "Total entries for this criterion: 6\n"
        "\n");
}

TEST(MapText, CutsALongNameAndAnIpv6Vtep) {
    RouterState state;
    state.leaf(leafOne, {"2001:db8::1234:5678"},
               {"a-router-name-longer-than-the-forty-six-characters-of-its-column"});
    EXPECT_EQ(mapBody(state),
              "a-router-name-longer-than-the-forty-six-charac 2001:db8::1234: 02:00:00:00:00:01\n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
}

TEST(MapText, CutsByBytes) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {std::string(45, 'r') + "\xc3\xbc"});
    EXPECT_EQ(
        mapBody(state),
        "rrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrr\303 10.0.0.1        02:00:00:00:00:01\n"
        "\n"
        "Total entries for this criterion: 1\n"
        "\n");
}

TEST(MapText, DoesNotCutWhatJustFits) {
    RouterState state;
    state.leaf(leafOne, {"255.255.255.255"}, {"a-router-name-of-exactly-forty-six-characters!"});
    EXPECT_EQ(mapBody(state),
              "a-router-name-of-exactly-forty-six-characters! 255.255.255.255 02:00:00:00:00:01\n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
}

TEST(MapText, PrintsNamesUnchanged) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"%s%n", "\"a\" \\ b", "nul\0in it"s, "\x1b[31m"});
    EXPECT_EQ(
        mapBody(state),
        "\033[31m                                          10.0.0.1        02:00:00:00:00:01\n"
        "\"a\" \\ b                                        10.0.0.1        02:00:00:00:00:01\n"
        "%s%n                                           10.0.0.1        02:00:00:00:00:01\n"
        "nul\000in it                                      10.0.0.1        02:00:00:00:00:01\n"s
        "\n"
        "Total entries for this criterion: 4\n"
        "\n");
}

TEST(MapJson, AnEmptyStateIsAnEmptyDictionary) {
    EXPECT_EQ(mapJson(RouterState()), "{\"logicalRouterMap\":{}}\n");
}

TEST(MapJson, ListsTheSwitchesOfEachRouterByName) {
    RouterState state;
    state.leaf(leafTwo, {"10.0.0.2"}, {"red"}).leaf(leafOne, {"10.0.0.1"}, {"red", "blue"});
    EXPECT_EQ(rendered(mapCommand(state), 3), R"({
  "logicalRouterMap": {
    "blue": {
      "switches": [
        {
          "switchId": "02:00:00:00:00:01",
          "vtepIp": "10.0.0.1"
        }
      ]
    },
    "red": {
      "switches": [
        {
          "switchId": "02:00:00:00:00:01",
          "vtepIp": "10.0.0.1"
        },
        {
          "switchId": "02:00:00:00:00:02",
          "vtepIp": "10.0.0.2"
        }
      ]
    }
  }
}
)");
    EXPECT_EQ(mapJson(state),
              R"({"logicalRouterMap":{)"
              R"("blue":{"switches":[{"switchId":"02:00:00:00:00:01","vtepIp":"10.0.0.1"}]},)"
              R"("red":{"switches":[{"switchId":"02:00:00:00:00:01","vtepIp":"10.0.0.1"},)"
              R"({"switchId":"02:00:00:00:00:02","vtepIp":"10.0.0.2"}]}}})"
              "\n");
}

TEST(MapJson, DoesNotCutALongNameOrAnIpv6Vtep) {
    std::string const name(60, 'r');
    RouterState state;
    state.leaf(leafOne, {"2001:db8::1234:5678"}, {name});
    EXPECT_EQ(mapJson(state), R"({"logicalRouterMap":{")" + name +
                                  R"(":{"switches":[{"switchId":"02:00:00:00:00:01",)"
                                  R"("vtepIp":"2001:db8::1234:5678"}]}}})"
                                  "\n");
}

TEST(MapJson, EscapesNames) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"%s \"a\" \\ \0\x1b\xc3\xbc\xff"s});
    EXPECT_EQ(mapJson(state),
              "{\"logicalRouterMap\":{\"%s \\\"a\\\" \\\\ \\u0000\\u001b\xc3\xbc\xef\xbf\xbd\":"
              "{\"switches\":[{\"switchId\":\"02:00:00:00:00:01\",\"vtepIp\":\"10.0.0.1\"}]}}}\n");
}

TEST(MapJson, APathThatIsOnlyThePrefixIsAnEmptyKey) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {""});
    EXPECT_EQ(mapJson(state), R"({"logicalRouterMap":{"":{"switches":[)"
                              R"({"switchId":"02:00:00:00:00:01","vtepIp":"10.0.0.1"}]}}})"
                              "\n");
}
