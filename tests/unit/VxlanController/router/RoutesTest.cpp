#include "state/VniStatusDirV2.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/Traced.h"
#include "tests/unit/VxlanController/router/RouterState.h"

#include <gtest/gtest.h>

using namespace VxlanController;
using Nolt::IpGenPrefix;

namespace {

constexpr char const * tracedRoutesRender =
    "8 void VxlanController::Cli::VcsLRRoute::render(U32, U32, U32)\n";
constexpr char const * tracedRoutesInitialize =
    "8 void VxlanController::Cli::VcsLRRoute::initialize()\n";
constexpr char const * tracedOutput = "8 void VxlanController::Cli::renderRoute(outfmt::Printer&, "
                                      "const VxlanController::Cli::VcsLRRoute*)\n";

std::string const emptyRoutes = "\n"
                                "Total entries for this criterion: 0\n"
                                "\n";

/// Whether a listing limited to `filter` shows a route to `route`.
bool passes(char const * filter, char const * route) {
    RouterState state;
    state.route("red", route, {"10.0.0.1"});
    auto const command = routesCommand(state, {.prefix = filter});
    rendered(command);
    return !command->lRRouteByName().empty();
}

/// The prefixes of a listing, each followed by a blank.
std::string prefixes(RouterState const & state, RouterFilters const & filters) {
    auto const command = routesCommand(state, filters);
    rendered(command);
    std::string text;
    for (Cli::LRRouteByName const & router : command->lRRouteByName()) {
        for (Cli::LRRoute const & route : router.lRRoute()) {
            text += route.prefix().stringValue() + " ";
        }
    }
    return text;
}

RouterState routersWithRoutes() {
    RouterState state;
    state.route("red", "10.1.0.0/16", {"10.0.0.1"})
        .route("red", "2001:db8::/32", {"fe80::1"})
        .route("blue", "10.2.0.0/16", {"10.0.0.2"});
    return state;
}

} // namespace

TEST(Routes, WithoutStatusDirectoryTheTableIsEmpty) {
    RouterState state;
    state.lRStatusDir = nullptr;
    EXPECT_EQ(routesBody(state), emptyRoutes);
    EXPECT_EQ(routesBody(state, {.router = "red", .prefix = "10.0.0.0/8"}), emptyRoutes);
    EXPECT_EQ(routesJson(state), "{\"route\":{}}\n");
}

TEST(Routes, TracesItsStepsInBothFormats) {
    for (Vex::U32 format : {textFormat, jsonFormat}) {
        Traced const trace;
        rendered(routesCommand(routersWithRoutes()), format);
        EXPECT_EQ(trace.text,
                  std::string(tracedRoutesRender) + tracedRoutesInitialize + tracedOutput);
    }
}

TEST(Routes, TracesNoCollectionWithoutStatusDirectory) {
    RouterState state;
    state.lRStatusDir = nullptr;
    for (Vex::U32 format : {textFormat, jsonFormat}) {
        Traced const trace;
        rendered(routesCommand(state), format);
        EXPECT_EQ(trace.text, std::string(tracedRoutesRender) + tracedOutput);
    }
}

TEST(Routes, CollectionAloneTracesOneLineOrNone) {
    Traced trace;
    routesCommand(RouterState())->initialize();
    EXPECT_EQ(trace.text, tracedRoutesInitialize);
    trace.text.clear();
    RouterState state;
    state.lRStatusDir = nullptr;
    routesCommand(state)->initialize();
    EXPECT_EQ(trace.text, "");
}

TEST(Routes, TracesNothingBelowLevelEight) {
    Traced const trace;
    Trace::disableAll();
    Trace::enableAllUpTo(7);
    routesText(routersWithRoutes());
    EXPECT_EQ(trace.text, "");
}

TEST(Routes, ARouterFilterSelectsByTheExactName) {
    RouterState state = routersWithRoutes();
    state.route("Red", "10.3.0.0/16").route("redd", "10.4.0.0/16").route("re", "10.5.0.0/16");
    EXPECT_EQ(prefixes(state, {.router = "red"}), "10.1.0.0/16 2001:db8::/32 ");
    EXPECT_EQ(routesBody(state, {.router = "green"}), emptyRoutes);
    EXPECT_EQ(routesJson(state, {.router = "green"}), "{\"route\":{}}\n");
}

TEST(Routes, APrefixFilterKeepsWhatContainsItAndWhatItContains) {
    EXPECT_TRUE(passes("10.0.0.0/8", "10.1.0.0/16"));
    EXPECT_TRUE(passes("10.0.0.0/8", "0.0.0.0/0"));
    EXPECT_TRUE(passes("10.0.0.0/8", "10.0.0.0/8"));
    EXPECT_TRUE(passes("10.1.2.0/24", "10.0.0.0/8"));
    EXPECT_TRUE(passes("10.1.2.3/32", "10.1.2.3/32"));
    EXPECT_TRUE(passes("10.1.2.3/32", "10.1.2.2/31"));
    EXPECT_TRUE(passes("128.0.0.0/1", "255.255.255.255/32"));
    EXPECT_FALSE(passes("10.0.0.0/8", "11.0.0.0/8"));
    EXPECT_FALSE(passes("10.0.0.0/8", "11.1.0.0/16"));
    EXPECT_FALSE(passes("10.1.2.0/24", "10.1.3.0/24"));
    EXPECT_FALSE(passes("10.1.2.0/24", "10.2.0.0/16"));
    EXPECT_FALSE(passes("10.1.2.3/32", "10.1.2.2/32"));
    EXPECT_FALSE(passes("0.0.0.0/1", "128.0.0.0/1"));
    EXPECT_FALSE(passes("0.0.0.0/32", "0.0.0.1/32"));
}

TEST(Routes, AnIpv6PrefixFilterKeepsWhatOverlapsIt) {
    EXPECT_TRUE(passes("2001:db8::/32", "2001:db8:1::/48"));
    EXPECT_TRUE(passes("2001:db8::/32", "2001::/16"));
    EXPECT_TRUE(passes("2001:db8::/32", "::/0"));
    EXPECT_TRUE(passes("2001:db8::1/128", "2001:db8::/127"));
    EXPECT_TRUE(passes("2001:db8:0:0:8000::/65", "2001:db8::/64"));
    EXPECT_TRUE(passes("::/0", "ffff::/16"));
    EXPECT_FALSE(passes("2001:db8::/32", "2001:db9::/32"));
    EXPECT_FALSE(passes("2001:db8:0:0:8000::/65", "2001:db8::/65"));
    EXPECT_FALSE(passes("2001:db8::1/128", "2001:db8::/128"));
    EXPECT_FALSE(passes("::/1", "8000::/1"));
}

TEST(Routes, AFilterOfTheOtherFamilyExcludesARoute) {
    EXPECT_FALSE(passes("0.0.0.0/0", "::/0"));
    EXPECT_FALSE(passes("::/0", "0.0.0.0/0"));
    EXPECT_FALSE(passes("::/0", "10.0.0.0/8"));
    EXPECT_FALSE(passes("10.0.0.0/8", "::ffff:10.0.0.0/104"));
    EXPECT_FALSE(passes("::ffff:10.0.0.0/104", "10.0.0.0/8"));
    EXPECT_FALSE(passes("::/0", ""));
    EXPECT_FALSE(passes("0.0.0.0/0", ""));
}

TEST(Routes, ADefaultRouteAsFilterKeepsItsWholeFamily) {
    RouterState state;
    for (char const * prefix :
         {"0.0.0.0/0", "10.0.0.0/8", "255.255.255.255/32", "::/0", "2001:db8::/32", "::1/128"}) {
        state.route("red", prefix);
    }
    EXPECT_EQ(prefixes(state, {.prefix = "0.0.0.0/0"}), "0.0.0.0/0 10.0.0.0/8 255.255.255.255/32 ");
    EXPECT_EQ(prefixes(state, {.prefix = "::/0"}), "::/0 ::1/128 2001:db8::/32 ");
}

TEST(Routes, WithoutPrefixFilterEveryRouteIsShown) {
    EXPECT_TRUE(passes("", "0.0.0.0/0"));
    EXPECT_TRUE(passes("", "::/0"));
    EXPECT_TRUE(passes("", "10.1.2.3/32"));
    EXPECT_TRUE(passes("", ""));
}

TEST(Routes, ARouterWithoutAPassingRouteIsNotListed) {
    EXPECT_EQ(routesBody(routersWithRoutes(), {.prefix = "10.2.0.0/16"}),
              "blue        10.2.0.0/16        10.0.0.2                                         \n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
    EXPECT_EQ(routesBody(routersWithRoutes(), {.router = "red", .prefix = "10.2.0.0/16"}),
              emptyRoutes);
    EXPECT_EQ(routesJson(routersWithRoutes(), {.router = "red", .prefix = "10.2.0.0/16"}),
              "{\"route\":{}}\n");
}

TEST(Routes, TheTotalCountsTheRoutesThatPass) {
    EXPECT_EQ(routesBody(routersWithRoutes(), {.prefix = "0.0.0.0/0"}),
              "blue        10.2.0.0/16        10.0.0.2                                         \n"
              "red         10.1.0.0/16        10.0.0.1                                         \n"
              "\n"
              "Total entries for this criterion: 2\n"
              "\n");
}

TEST(Routes, EntriesThatAreNotRoutersAreSkipped) {
    RouterState state;
    state.lRStatusDir->entityIs("blue", Vex::makePtr<VniStatusDirV2>());
    state.lRStatusDir->dirIs("green");
    state.route("red", "10.1.0.0/16");
    EXPECT_EQ(prefixes(state, {}), "10.1.0.0/16 ");
    EXPECT_EQ(prefixes(state, {.router = "blue"}), "");
    EXPECT_EQ(prefixes(state, {.router = "green"}), "");
}

TEST(Routes, ARouterHasItsOwnNameNotThatOfItsEntry) {
    RouterState state;
    state.status("entry", "red");
    state.route("entry", "10.1.0.0/16", {"10.0.0.1"});
    EXPECT_EQ(routesBody(state),
              "red         10.1.0.0/16        10.0.0.1                                         \n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
    EXPECT_EQ(prefixes(state, {.router = "red"}), "10.1.0.0/16 ");
    EXPECT_EQ(prefixes(state, {.router = "entry"}), "");
}

TEST(Routes, TwoEntriesOfOneRouterAreMerged) {
    RouterState state;
    state.status("a", "red");
    state.status("b", "red");
    state.route("a", "10.1.0.0/16", {"10.0.0.1"})
        .route("b", "10.1.0.0/16", {"10.0.0.1", "10.0.0.2"})
        .route("b", "10.2.0.0/16")
        .route("a", "10.3.0.0/16");
    EXPECT_EQ(routesBody(state),
              "red         10.1.0.0/16        10.0.0.1, 10.0.0.2                               \n"
              "            10.2.0.0/16                                                         \n"
              "            10.3.0.0/16                                                         \n"
              "\n"
              "Total entries for this criterion: 3\n"
              "\n");
}

TEST(Routes, SwitchesMakeNoDifference) {
    RouterState state = routersWithRoutes();
    std::string const before = routesText(state);
    state.leaf("02:00:00:00:00:01", {"10.9.0.1"}, {"red", "green"});
    EXPECT_EQ(routesText(state), before);
}
