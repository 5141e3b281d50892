#include "tests/unit/VxlanController/router/RouterState.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

TEST(DetailText, AnEmptyStateIsTwoHeadersAndTwoTotalsOfZero) {
    std::string const expected =
        "--------------------------------------------------------------------------------\n"
        "Name                                              IP Address         VNI        \n"
        "--------------------------------------------------------------------------------\n"
        "\n"
        "Total entries for this criterion: 0\n"
        "\n"
        "Uplink ports:\n"
        "--------------------------------------------------------------------------------\n"
        "Name        IP Address         Switch            Vlan Ports                         \n"
        "--------------------------------------------------------------------------------\n"
        "\n"
        "Total entries for this criterion: 0\n"
        "\n";
    EXPECT_EQ(detailText(RouterState()), expected);
}

TEST(DetailText, EachRouterIsNamedOnItsFirstRowInBothTables) {
    RouterState state;
    state.leaf(leafOne, {"10.9.0.1"}, {"red", "blue"})
        .port("red", "10.0.2.1/24", 20)
        .port("red", "10.0.1.1/24", 10)
        .port("blue", "10.0.1.1/24", 16777215)
        .uplink("red", "10.1.2.1/31", {{"Ethernet2", 200}})
        .uplink("red", "10.1.1.1/31", {{"Ethernet1", 100}})
        .uplink("blue", "10.1.1.1/31", {{"Ethernet3", 4094}});
    std::string const expected =
        "--------------------------------------------------------------------------------\n"
        "Name                                              IP Address         VNI        \n"
        "--------------------------------------------------------------------------------\n"
        "blue                                              10.0.1.1/24        16777215   \n"
        "red                                               10.0.1.1/24        10         \n"
        "                                                  10.0.2.1/24        20         \n"
        "\n"
        "Total entries for this criterion: 3\n"
        "\n"
        "Uplink ports:\n"
        "--------------------------------------------------------------------------------\n"
        "Name        IP Address         Switch            Vlan Ports                         \n"
        "--------------------------------------------------------------------------------\n"
        "blue        10.1.1.1/31        02:00:00:00:00:01 4094 Ethernet3                     \n"
        "red         10.1.1.1/31        02:00:00:00:00:01 100  Ethernet1                     \n"
        "            10.1.2.1/31        02:00:00:00:00:01 200  Ethernet2                     \n"
        "\n"
        "Total entries for this criterion: 3\n"
        "\n";
    EXPECT_EQ(detailText(state), expected);
}

TEST(DetailText, PortsAreOrderedByAddressThenLength) {
    RouterState state;
    state.port("red", "2001:db8::1/64", 6)
        .port("red", "10.0.0.10/24", 4)
        .port("red", "10.0.0.9/25", 3)
        .port("red", "10.0.0.9/24", 2)
        .port("red", "9.255.255.255/8", 1)
        .port("red", "::1/128", 5);
    EXPECT_EQ(portBody(state),
              "red                                               9.255.255.255/8    1          \n"
              "                                                  10.0.0.9/24        2          \n"
              "                                                  10.0.0.9/25        3          \n"
              "                                                  10.0.0.10/24       4          \n"
              "                                                  ::1/128            5          \n"
              "                                                  2001:db8::1/64     6          \n"
              "\n"
              "Total entries for this criterion: 6\n"
              "\n");
}

TEST(DetailText, ShowsVnisInDottedNotationWhenAskedTo) {
    RouterState state;
    state.port("red", "10.0.0.1/24", 4098)
        .port("red", "10.0.0.2/24", 16777215)
        .port("red", "10.0.0.3/24", 0);
    EXPECT_EQ(portBody(state, {.dotted = true}),
              "red                                               10.0.0.1/24        0.16.2     \n"
              "                                                  10.0.0.2/24        255.255.255\n"
              "                                                  10.0.0.3/24        0.0.0      \n"
              "\n"
              "Total entries for this criterion: 3\n"
              "\n");
}

TEST(DetailText, ARouterWithoutPortsHasNoRow) {
    RouterState state;
    state.router("blue").port("red", "10.0.0.1/24", 10).router("white");
    EXPECT_EQ(portBody(state),
              "red                                               10.0.0.1/24        10         \n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
    EXPECT_EQ(uplinkBody(state), "\n"
                                 "Total entries for this criterion: 0\n"
                                 "\n");
}

TEST(DetailText, FivePortsOfAnUplinkTakeThreeRows) {
    RouterState state;
    state.leaf(leafOne, {"10.9.0.1"}, {"red"})
        .uplink("red", "10.1.0.1/24", {{"Et5", 7}, {"Et2", 7}, {"Et4", 7}, {"Et1", 7}, {"Et3", 7}});
    std::string const expected =
        "red         10.1.0.1/24        02:00:00:00:00:01 7    Et1, Et2,                     \n"
        "                                                      Et3, Et4,                     \n"
        "                                                      Et5                           \n"
        "\n"
        "Total entries for this criterion: 1\n"
        "\n";
    EXPECT_EQ(uplinkBody(state), expected);
}

TEST(DetailText, ThreePortsLeaveASeparatorAfterTheFirstRow) {
    RouterState state;
    state.uplink("red", "10.1.0.1/24", {{"Et1", 7}, {"Et2", 7}, {"Et3", 7}});
    std::string const expected =
        "red         10.1.0.1/24                          7    Et1, Et2,                     \n"
        "                                                      Et3                           \n"
        "\n"
        "Total entries for this criterion: 1\n"
        "\n";
    EXPECT_EQ(uplinkBody(state), expected);
}

TEST(DetailText, AnEvenNumberOfPortsEndsWithoutASeparator) {
    RouterState state;
    state.uplink("red", "10.1.0.1/24", {{"Et1", 7}, {"Et2", 7}})
        .uplink("red", "10.1.0.2/24", {{"Et1", 7}, {"Et2", 7}, {"Et3", 7}, {"Et4", 7}});
    std::string const expected =
        "red         10.1.0.1/24                          7    Et1, Et2                      \n"
        "            10.1.0.2/24                          7    Et1, Et2,                     \n"
        "                                                      Et3, Et4                      \n"
        "\n"
        "Total entries for this criterion: 2\n"
        "\n";
    EXPECT_EQ(uplinkBody(state), expected);
}

TEST(DetailText, OnePortIsOneFullRow) {
    RouterState state;
    state.leaf(leafOne, {"10.9.0.1"}, {"red"}).uplink("red", "10.1.0.1/24", {{"Ethernet1", 4094}});
    std::string const expected =
        "red         10.1.0.1/24        02:00:00:00:00:01 4094 Ethernet1                     \n"
        "\n"
        "Total entries for this criterion: 1\n"
        "\n";
    EXPECT_EQ(uplinkBody(state), expected);
}

TEST(DetailText, AnUplinkWithoutPortsPrintsNoRowButCounts) {
    RouterState state;
    state.uplink("blue", "10.1.0.1/24", {})
        .uplink("red", "10.1.0.1/24", {})
        .uplink("red", "10.1.0.2/24", {{"Et1", 7}})
        .uplink("red", "10.1.0.3/24", {})
        .uplink("red", "10.1.0.4/24", {{"Et2", 7}});
    std::string const expected =
        "red         10.1.0.2/24                          7    Et1                           \n"
        "            10.1.0.4/24                          7    Et2                           \n"
        "\n"
        "Total entries for this criterion: 5\n"
        "\n";
    EXPECT_EQ(uplinkBody(state), expected);
}

TEST(DetailText, PortNamesAreOrderedByByteAndShownOnce) {
    RouterState state;
    state.uplink("red", "10.1.0.1/24",
                 {{"Et2", 7}, {"Et10", 7}, {"et1", 7}, {"Et2", 8}, {"Et10", 9}});
    std::string const body = uplinkBody(state);
    EXPECT_NE(body.find("Et10, Et2, "), body.npos) << body;
    EXPECT_NE(body.find(" et1  "), body.npos) << body;
    EXPECT_EQ(std::count(body.begin(), body.end(), '\n'), 2 + 3) << body;
}

TEST(DetailText, UplinksAreOrderedByAddress) {
    RouterState state;
    state.uplink("red", "2001:db8::1/64", {{"Et1", 3}})
        .uplink("red", "10.1.0.10/24", {{"Et1", 2}})
        .uplink("red", "10.1.0.9/24", {{"Et1", 1}});
    std::string const expected =
        "red         10.1.0.9/24                          1    Et1                           \n"
        "            10.1.0.10/24                         2    Et1                           \n"
        "            2001:db8::1/64                       3    Et1                           \n"
        "\n"
        "Total entries for this criterion: 3\n"
        "\n";
    EXPECT_EQ(uplinkBody(state), expected);
}

TEST(DetailText, CutsWhatIsLongerThanItsColumn) {
    std::string const name = "a-router-name-longer-than-the-forty-nine-characters-of-its-column";
    RouterState state;
    state.leaf(leafOne, {"10.9.0.1"}, {name})
        .port(name, "2001:db8:0:1::1234/64", 10)
        .uplink(name, "2001:db8:0:1::1234/64",
                {{"Port-Channel100.1001", 65535}, {"Port-Channel100.1002", 65535}});
    EXPECT_EQ(portBody(state),
              "a-router-name-longer-than-the-forty-nine-characte 2001:db8:0:1::1234 10         \n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
    std::string const expected =
        "a-router-na 2001:db8:0:1::1234 02:00:00:00:00:01 6553 Port-Channel100.1001, Port-Cha\n"
        "\n"
        "Total entries for this criterion: 1\n"
        "\n";
    EXPECT_EQ(uplinkBody(state), expected);
}

TEST(DetailText, DoesNotCutWhatJustFits) {
    std::string const name(49, 'r');
    std::string const shortName(11, 'r');
    RouterState state;
    state.port(name, "100.100.100.100/24", 16777215)
        .leaf(leafOne, {"10.9.0.1"}, {shortName})
        .uplink(shortName, "100.100.100.100/24",
                {{"Ethernet1/14/1", 4094}, {"Ethernet1/15/1", 4094}});
    EXPECT_EQ(portBody(state, {.dotted = true}),
              "rrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrrr 100.100.100.100/24 255.255.255\n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
    std::string const expected =
        "rrrrrrrrrrr 100.100.100.100/24 02:00:00:00:00:01 4094 Ethernet1/14/1, Ethernet1/15/1\n"
        "\n"
        "Total entries for this criterion: 1\n"
        "\n";
    EXPECT_EQ(uplinkBody(state), expected);
}

TEST(DetailText, PrintsNamesUnchanged) {
    RouterState state;
    state.port("nul\0in it"s, "10.0.0.1/24", 1)
        .port("%s%n", "10.0.0.1/24", 2)
        .port("", "10.0.0.1/24", 3)
        .uplink("\"a\" \\ b", "10.1.0.1/24", {{"%d%s", 7}})
        .uplink("\xc3\xbc", "10.1.0.1/24", {{"\x1b[31m", 7}});
    EXPECT_EQ(
        portBody(state),
        "                                                  10.0.0.1/24        3          \n"
        "%s%n                                              10.0.0.1/24        2          \n"
        "nul\000in it                                         10.0.0.1/24        1          \n"s
        "\n"
        "Total entries for this criterion: 3\n"
        "\n");
    std::string const expected =
        "\"a\" \\ b     10.1.0.1/24                          7    %d%s                          \n"
        "\303\274          10.1.0.1/24                          7    \033[31m                      "
        "   \n"
        "\n"
        "Total entries for this criterion: 2\n"
        "\n";
    EXPECT_EQ(uplinkBody(state), expected);
}
