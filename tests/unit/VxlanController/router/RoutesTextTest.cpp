#include "tests/unit/VxlanController/router/RouterState.h"

#include <gtest/gtest.h>

using namespace std::string_literals;

TEST(RoutesText, AnEmptyStateIsAHeaderAndATotalOfZero) {
    EXPECT_EQ(routesText(RouterState()),
              "--------------------------------------------------------------------------------\n"
              "Name        Prefix             Nexthop                                          \n"
              "--------------------------------------------------------------------------------\n"
              "\n"
              "Total entries for this criterion: 0\n"
              "\n");
}

TEST(RoutesText, SevenNexthopsTakeThreeRows) {
    RouterState state;
    state.route(
        "red", "10.1.0.0/16",
        {"10.0.0.7", "10.0.0.3", "10.0.0.1", "10.0.0.6", "10.0.0.2", "10.0.0.5", "10.0.0.4"});
    EXPECT_EQ(routesBody(state),
              "red         10.1.0.0/16        10.0.0.1, 10.0.0.2, 10.0.0.3                     \n"
              "                               10.0.0.4, 10.0.0.5, 10.0.0.6                     \n"
              "                               10.0.0.7                                         \n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
}

TEST(RoutesText, ThreeNexthopsAreOneRowWithoutATrailingSeparator) {
    RouterState state;
    state.route("red", "10.1.0.0/16", {"10.0.0.1", "10.0.0.2", "10.0.0.3"});
    EXPECT_EQ(routesBody(state),
              "red         10.1.0.0/16        10.0.0.1, 10.0.0.2, 10.0.0.3                     \n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
}

TEST(RoutesText, TheNextRouteStartsANewRowAfterAnyNumberOfNexthops) {
    RouterState state;
    state.route("red", "10.1.0.0/16", {"10.0.0.1"})
        .route("red", "10.2.0.0/16", {"10.0.0.1", "10.0.0.2"})
        .route("red", "10.4.0.0/16", {"10.0.0.1", "10.0.0.2", "10.0.0.3", "10.0.0.4"})
        .route("red", "10.6.0.0/16",
               {"10.0.0.1", "10.0.0.2", "10.0.0.3", "10.0.0.4", "10.0.0.5", "10.0.0.6"});
    EXPECT_EQ(routesBody(state),
              "red         10.1.0.0/16        10.0.0.1                                         \n"
              "            10.2.0.0/16        10.0.0.1, 10.0.0.2                               \n"
              "            10.4.0.0/16        10.0.0.1, 10.0.0.2, 10.0.0.3                     \n"
              "                               10.0.0.4                                         \n"
              "            10.6.0.0/16        10.0.0.1, 10.0.0.2, 10.0.0.3                     \n"
              "                               10.0.0.4, 10.0.0.5, 10.0.0.6                     \n"
              "\n"
              "Total entries for this criterion: 4\n"
              "\n");
}

TEST(RoutesText, ARouterIsNamedOnTheFirstRowOfItsFirstRouteOnly) {
    RouterState state;
    state.route("red", "10.2.0.0/16", {"10.0.0.2"})
        .route("red", "10.1.0.0/16", {"10.0.0.1"})
        .route("blue", "10.1.0.0/16", {"10.0.0.1"});
    EXPECT_EQ(routesBody(state),
              "blue        10.1.0.0/16        10.0.0.1                                         \n"
              "red         10.1.0.0/16        10.0.0.1                                         \n"
              "            10.2.0.0/16        10.0.0.2                                         \n"
              "\n"
              "Total entries for this criterion: 3\n"
              "\n");
}

TEST(RoutesText, ARouteWithoutNexthopsIsOneRowWithAnEmptyColumn) {
    RouterState state;
    state.route("blue", "10.1.0.0/16")
        .route("red", "10.1.0.0/16")
        .route("red", "10.2.0.0/16", {"10.0.0.1"})
        .route("red", "10.3.0.0/16");
    EXPECT_EQ(routesBody(state),
              "blue        10.1.0.0/16                                                         \n"
              "red         10.1.0.0/16                                                         \n"
              "            10.2.0.0/16        10.0.0.1                                         \n"
              "            10.3.0.0/16                                                         \n"
              "\n"
              "Total entries for this criterion: 4\n"
              "\n");
}

TEST(RoutesText, RoutesAndNexthopsAreOrderedByAddress) {
    RouterState state;
    state.route("red", "2001:db8::/32", {"fe80::1", "10.0.0.10", "10.0.0.9"})
        .route("red", "::/0", {"::2"})
        .route("red", "10.0.0.0/16", {"10.0.0.1"})
        .route("red", "10.0.0.0/8", {"10.0.0.1"})
        .route("red", "9.0.0.0/8", {"10.0.0.1"})
        .route("red", "0.0.0.0/0", {"10.0.0.1"});
    EXPECT_EQ(routesBody(state),
              "red         0.0.0.0/0          10.0.0.1                                         \n"
              "            9.0.0.0/8          10.0.0.1                                         \n"
              "            10.0.0.0/8         10.0.0.1                                         \n"
              "            10.0.0.0/16        10.0.0.1                                         \n"
              "            ::/0               ::2                                              \n"
              "            2001:db8::/32      10.0.0.9, 10.0.0.10, fe80::1                     \n"
              "\n"
              "Total entries for this criterion: 6\n"
              "\n");
}

TEST(RoutesText, ARouterWithoutRoutesIsNotListed) {
    RouterState state;
    state.router("blue").route("red", "10.1.0.0/16", {"10.0.0.1"}).router("white");
    EXPECT_EQ(routesBody(state),
              "red         10.1.0.0/16        10.0.0.1                                         \n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
}

TEST(RoutesText, CutsWhatIsLongerThanItsColumn) {
    RouterState state;
    state.route("a-router-name", "2001:db8:aaaa:bbbb::/64",
                {"2001:db8:aaaa:bbbb::1", "2001:db8:aaaa:bbbb::2", "2001:db8:aaaa:bbbb::3",
                 "2001:db8:aaaa:bbbb::4"});
    EXPECT_EQ(routesBody(state),
              "a-router-na 2001:db8:aaaa:bbbb 2001:db8:aaaa:bbbb::1, 2001:db8:aaaa:bbbb::2, 200\n"
              "                               2001:db8:aaaa:bbbb::4                            \n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
}

TEST(RoutesText, CutsThreeOfTheLongestAddresses) {
    RouterState state;
    state.route("red", "::/0",
                {"1111:2222:3333:4444:5555:6666:7777:8881",
                 "1111:2222:3333:4444:5555:6666:7777:8882",
                 "1111:2222:3333:4444:5555:6666:7777:8883"});
    EXPECT_EQ(routesBody(state),
              "red         ::/0               1111:2222:3333:4444:5555:6666:7777:8881, 1111:222\n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
}

TEST(RoutesText, DoesNotCutWhatJustFits) {
    RouterState state;
    state.route("eleven-long", "100.100.100.128/25",
                {"100.100.100.100", "100.100.100.101", "100.100.100.102"});
    EXPECT_EQ(routesBody(state),
              "eleven-long 100.100.100.128/25 100.100.100.100, 100.100.100.101, 100.100.100.102\n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
}

TEST(RoutesText, PrintsNamesUnchanged) {
    RouterState state;
    for (std::string const & name :
         {"%s%n%d"s, "\"a\" \\ b"s, "nul\0in it"s, "\x1b[31m"s, "\xc3\xbc"s, ""s}) {
        state.route(name, "10.1.0.0/16", {"10.0.0.1"});
    }
    EXPECT_EQ(
        routesBody(state),
        "            10.1.0.0/16        10.0.0.1                                         \n"
        "\033[31m       10.1.0.0/16        10.0.0.1                                         \n"
        "\"a\" \\ b     10.1.0.0/16        10.0.0.1                                         \n"
        "%s%n%d      10.1.0.0/16        10.0.0.1                                         \n"
        "nul\000in it   10.1.0.0/16        10.0.0.1                                         \n"s
        "\303\274          10.1.0.0/16        10.0.0.1                                         \n"
        "\n"
        "Total entries for this criterion: 6\n"
        "\n");
}

TEST(RoutesText, SeventyThousandScrambledRoutesAreSorted) {
    constexpr Vex::U32 count = 70'000;
    constexpr Vex::U32 step = 7919; // shares no factor with the count
    RouterState state;
    auto & status = state.status("red");
    for (Vex::U32 i = 0; i < count; ++i) {
        Nolt::IpAddr const network(0x0A000000 + (i * step % count << 8));
        VxlanController::LRRouteV2 route(Nolt::IpGenPrefix(network, 24));
        route.nexthopIs(network);
        ASSERT_TRUE(status.routeIs(std::move(route)));
    }
    std::string expected;
    for (Vex::U32 i = 0; i < count; ++i) {
        std::string const network = std::to_string(10 + (i >> 16)) + "." +
                                    std::to_string(i >> 8 & 255) + "." + std::to_string(i & 255) +
                                    ".0";
        char row[96];
        std::snprintf(row, sizeof row, "%-11.11s %-18.18s %-49.49s\n", i == 0 ? "red" : "",
                      (network + "/24").c_str(), network.c_str());
        expected += row;
    }
    EXPECT_TRUE(routesBody(state) == expected + "\nTotal entries for this criterion: 70000\n\n");
}
