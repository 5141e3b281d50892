#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/router/RouterState.h"
#include "tests/unit/platform/outfmt/JsonReader.h"

#include <gtest/gtest.h>

#include <utility>

using namespace std::string_literals;
using outfmt::test::Json;
using outfmt::test::readJson;

namespace {

using Nexthops = std::vector<std::string>;
using Routes = std::vector<std::pair<std::string, Nexthops>>;
using Routers = std::vector<std::pair<std::string, Routes>>;

/// The document, as a reader of it expects it for these routes.
Json shapeOf(Routers const & routers) {
    Json result = Json::object();
    for (auto const & [router, routes] : routers) {
        Json prefixes = Json::object();
        for (auto const & [prefix, nexthops] : routes) {
            Json list = Json::list();
            for (std::string const & nexthop : nexthops) {
                list.members.emplace_back("", Json::string(nexthop));
            }
            prefixes.members.emplace_back(prefix, Json::object({{"nexthop", std::move(list)}}));
        }
        result.members.emplace_back(router, Json::object({{"prefix", std::move(prefixes)}}));
    }
    return Json::object({{"route", std::move(result)}});
}

RouterState stateOf(Routers const & routers) {
    RouterState state;
    for (auto const & [router, routes] : routers) {
        for (auto const & [prefix, nexthops] : routes) {
            VxlanController::LRRouteV2 route(Nolt::IpGenPrefix::fromString(prefix));
            for (std::string const & nexthop : nexthops) {
                route.nexthopIs(Nolt::IpGenAddr::fromString(nexthop));
            }
            state.status(router).routeIs(std::move(route));
        }
    }
    return state;
}

/// Renders `routers` in every JSON format and reads them back.
void expectShape(Routers const & routers) {
    for (Vex::U32 format : {0U, 2U, 3U, 4294967295U}) {
        std::string const document = rendered(routesCommand(stateOf(routers)), format);
        EXPECT_EQ(readJson(document), shapeOf(routers)) << document;
    }
}

Nexthops const some = {"10.0.0.1", "10.0.0.2"};

} // namespace

TEST(RoutesJson, AnEmptyStateIsAnEmptyDictionary) {
    EXPECT_EQ(routesJson(RouterState()), "{\"route\":{}}\n");
}

TEST(RoutesJson, ShowsNexthopsByAddressUnderPrefixesUnderRouters) {
    RouterState state;
    state.route("red", "10.1.0.0/16", {"10.0.0.10", "10.0.0.9", "fe80::1", "10.0.0.8"})
        .route("red", "2001:db8::/32", {"fe80::1"})
        .route("blue", "0.0.0.0/0", {"10.0.0.1"});
    EXPECT_EQ(rendered(routesCommand(state), 3), R"({
  "route": {
    "blue": {
      "prefix": {
        "0.0.0.0/0": {
          "nexthop": [
            "10.0.0.1"
          ]
        }
      }
    },
    "red": {
      "prefix": {
        "10.1.0.0/16": {
          "nexthop": [
            "10.0.0.8",
            "10.0.0.9",
            "10.0.0.10",
            "fe80::1"
          ]
        },
        "2001:db8::/32": {
          "nexthop": [
            "fe80::1"
          ]
        }
      }
    }
  }
}
)");
}

TEST(RoutesJson, TheOnlyRouteCanHaveNoNexthop) {
    RouterState state;
    state.route("red", "10.1.0.0/16");
    EXPECT_EQ(routesJson(state), R"({"route":{"red":{"prefix":{"10.1.0.0/16":{"nexthop":[]}}}}})"
                                 "\n");
    EXPECT_EQ(rendered(routesCommand(state), 3), R"({
  "route": {
    "red": {
      "prefix": {
        "10.1.0.0/16": {
          "nexthop": []
        }
      }
    }
  }
}
)");
    expectShape({{"red", {{"10.1.0.0/16", {}}}}});
}

TEST(RoutesJson, TheFirstRouteCanHaveNoNexthop) {
    expectShape({{"red", {{"10.1.0.0/16", {}}, {"10.2.0.0/16", some}, {"10.3.0.0/16", some}}}});
}

TEST(RoutesJson, AMiddleRouteCanHaveNoNexthop) {
    expectShape({{"red", {{"10.1.0.0/16", some}, {"10.2.0.0/16", {}}, {"10.3.0.0/16", some}}}});
}

TEST(RoutesJson, TheLastRouteCanHaveNoNexthop) {
    expectShape({{"red", {{"10.1.0.0/16", some}, {"10.2.0.0/16", some}, {"10.3.0.0/16", {}}}}});
}

TEST(RoutesJson, SeveralRoutesInARowCanHaveNoNexthop) {
    Routes const none = {{"10.1.0.0/16", {}}, {"10.2.0.0/16", {}}, {"10.3.0.0/16", {}}};
    expectShape({{"red", none}});
    expectShape({{"blue", none}, {"green", {{"10.1.0.0/16", some}}}, {"red", none}});
    RouterState const state = stateOf({{"red", none}});
    EXPECT_EQ(routesJson(state), R"({"route":{"red":{"prefix":{"10.1.0.0/16":{"nexthop":[]},)"
                                 R"("10.2.0.0/16":{"nexthop":[]},"10.3.0.0/16":{"nexthop":[]}}}}})"
                                 "\n");
}

TEST(RoutesJson, AnyOfTheRoutesOfTwoRoutersCanHaveNoNexthop) {
    constexpr unsigned routerCount = 2;
    constexpr unsigned routeCount = 4;
    for (unsigned pattern = 0; pattern < 1U << (routerCount * routeCount); ++pattern) {
        Routers routers;
        for (unsigned router = 0; router < routerCount; ++router) {
            Routes routes;
            for (unsigned route = 0; route < routeCount; ++route) {
                bool const none = (pattern >> (router * routeCount + route) & 1U) != 0;
                routes.emplace_back("10." + std::to_string(route) + ".0.0/16",
                                    none ? Nexthops{} : some);
            }
            routers.emplace_back("router" + std::to_string(router), std::move(routes));
        }
        expectShape(routers);
    }
}

TEST(RoutesJson, NothingIsCut) {
    std::string const longest = "1111:2222:3333:4444:5555:6666:7777:888";
    expectShape({{"a-router-name-longer-than-its-column",
                  {{longest + "0/128", {longest + "1", longest + "2", longest + "3"}}}}});
}

TEST(RoutesJson, EscapesNames) {
    RouterState state;
    state.route("%s \"a\" \\ \0\x1b\xc3\xbc\xff"s, "10.1.0.0/16");
    EXPECT_EQ(routesJson(state),
              "{\"route\":{\"%s \\\"a\\\" \\\\ \\u0000\\u001b\xc3\xbc\xef\xbf\xbd\":"
              "{\"prefix\":{\"10.1.0.0/16\":{\"nexthop\":[]}}}}}\n");
    expectShape({{"", {{"10.1.0.0/16", {}}}}, {"%s \"a\" \\ \0\x1b\xc3\xbc"s, {{"::/0", some}}}});
}
