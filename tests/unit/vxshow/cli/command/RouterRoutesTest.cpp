#include "tests/unit/vxshow/Answers.h"

#include <gtest/gtest.h>

namespace {

Asked const routerRoutes({"router", "routes"}, snapshotWith("routers", R"({ "status": {
  "prod": { "routes": {
    "2001:db8::/32": [ "2001:db8::1" ],
    "10.1.0.0/16": [ "10.9.0.7", "10.9.0.6", "10.9.0.5", "10.9.0.4", "10.9.0.3", "10.9.0.2",
                     "10.9.0.1" ],
    "10.1.2.0/24": [],
    "0.0.0.0/0": [ "10.9.0.1", "10.9.0.2", "2001:db8::1" ] } },
  "dmz": { "routes": { "192.0.2.0/24": [] } },
  "empty": {} } })"));

constexpr char const * routerRoutesRule =
    "--------------------------------------------------------------------------------\n";
std::string const routerRoutesHead =
    routerRoutesRule + std::string("Name        Prefix             Nexthop") +
    "                                          \n" + routerRoutesRule;

/// The row of a prefix, or of a further nexthop if the prefix is empty.
std::string routesRow(std::string name, std::string prefix, std::string nexthops) {
    name.resize(11, ' ');
    prefix.resize(18, ' ');
    nexthops.resize(49, ' ');
    return name + " " + prefix + " " + nexthops + "\n";
}

std::string const wide = routesRow("", "10.1.0.0/16", "10.9.0.1, 10.9.0.2, 10.9.0.3") +
                         routesRow("", "", "10.9.0.4, 10.9.0.5, 10.9.0.6") +
                         routesRow("", "", "10.9.0.7");

std::string routerRoutesTotal(int count) {
    return "\nTotal entries for this criterion: " + std::to_string(count) + "\n\n";
}

/// The prefixes of `prod` that are listed with `filter`.
std::string prefixesWith(std::string const & filter) {
    auto const text = routerRoutes.listing({"--prefix", filter, "--router", "prod"});
    std::string prefixes;
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1)) {
        auto const line = text.substr(at + 1, text.find('\n', at + 1) - at - 1);
        if (line.size() == 80 && line[12] != ' ' && line[12] != '-' && line[12] != 'P') {
            prefixes += line.substr(12, line.find(' ', 12) - 12) + " ";
        }
    }
    return prefixes;
}

} // namespace

TEST(RouterRoutes, ListsTheRoutesOfEachRouter) {
    EXPECT_EQ(routerRoutes.listing({}),
              routerRoutesHead + routesRow("dmz", "192.0.2.0/24", "") +
                  routesRow("prod", "0.0.0.0/0", "10.9.0.1, 10.9.0.2, 2001:db8::1") + wide +
                  routesRow("", "10.1.2.0/24", "") + routesRow("", "2001:db8::/32", "2001:db8::1") +
                  routerRoutesTotal(5));
}

TEST(RouterRoutes, ListsAsTheSameJsonInEachRevision) {
    std::string const expected =
        R"({"route":{"dmz":{"prefix":{"192.0.2.0/24":{"nexthop":[]}}},)"
        R"("prod":{"prefix":{)"
        R"("0.0.0.0/0":{"nexthop":["10.9.0.1","10.9.0.2","2001:db8::1"]},)"
        R"("10.1.0.0/16":{"nexthop":["10.9.0.1","10.9.0.2","10.9.0.3","10.9.0.4",)"
        R"("10.9.0.5","10.9.0.6","10.9.0.7"]},)"
        R"("10.1.2.0/24":{"nexthop":[]},)"
        R"("2001:db8::/32":{"nexthop":["2001:db8::1"]}}}}})"
        "\n";
    EXPECT_EQ(routerRoutes.listing({"--json"}), expected);
    EXPECT_EQ(routerRoutes.listing({"--json", "--revision", "1", "--dotted"}), expected);
}

TEST(RouterRoutes, ListsTheExample) {
    EXPECT_EQ(answer(exampleFabric(), {"router", "routes", "--prefix", "10.20.0.0/16"}),
              routerRoutesHead + routesRow("internet", "0.0.0.0/0", "100.64.0.0") +
                  routesRow("", "10.0.0.0/8", "") + routesRow("prod", "0.0.0.0/0", "10.255.1.2") +
                  routesRow("", "10.20.0.0/16", "10.255.1.3, 10.255.1.4, 10.255.1.5") +
                  routesRow("", "10.20.99.0/24", "") + routerRoutesTotal(5));
    EXPECT_EQ(answer(exampleFabric(), {"router", "routes", "--router", "prod"}),
              routerRoutesHead + routesRow("prod", "0.0.0.0/0", "10.255.1.2") +
                  routesRow("", "10.20.0.0/16", "10.255.1.3, 10.255.1.4, 10.255.1.5") +
                  routesRow("", "10.20.99.0/24", "") +
                  routesRow("", "10.64.0.0/12", "10.255.1.2, 10.255.1.3, 10.255.1.4") +
                  routesRow("", "", "10.255.1.5, 10.255.1.6, 10.255.1.7") +
                  routesRow("", "", "10.255.1.8") +
                  routesRow("", "2001:db8::/32", "2001:db8:ff:1::2") + routerRoutesTotal(5));
}

TEST(RouterRoutes, ThePrefixFilterKeepsWhatOverlaps) {
    EXPECT_EQ(prefixesWith("10.0.0.0/8"), "0.0.0.0/0 10.1.0.0/16 10.1.2.0/24 ");
    EXPECT_EQ(prefixesWith("10.1.2.0/24"), "0.0.0.0/0 10.1.0.0/16 10.1.2.0/24 ");
    EXPECT_EQ(prefixesWith("10.1.3.0/24"), "0.0.0.0/0 10.1.0.0/16 ");
    EXPECT_EQ(prefixesWith("10.2.0.0/16"), "0.0.0.0/0 ");
    EXPECT_EQ(prefixesWith("10.1.2.3/32"), "0.0.0.0/0 10.1.0.0/16 10.1.2.0/24 ");
    EXPECT_EQ(prefixesWith("0.0.0.0/0"), "0.0.0.0/0 10.1.0.0/16 10.1.2.0/24 ");
    EXPECT_EQ(prefixesWith("::/0"), "2001:db8::/32 ");
    EXPECT_EQ(prefixesWith("2001:0DB8:0:1::/64"), "2001:db8::/32 ");
    EXPECT_EQ(prefixesWith("2001:db9::/32"), "");
    EXPECT_EQ(prefixesWith("::ffff:10.1.2.0/120"), "");
}

TEST(RouterRoutes, AFilterThatMatchesNothingIsNotAnError) {
    std::string const nothing = routerRoutesHead + routerRoutesTotal(0);
    for (auto const & filters :
         std::vector<std::vector<std::string>>{{"--router", "empty"},
                                               {"--prefix", "2001:db9::/32"},
                                               {"--router", "dmz", "--prefix", "10.0.0.0/8"}}) {
        EXPECT_EQ(routerRoutes.listing(filters), nothing) << testing::PrintToString(filters);
    }
    EXPECT_EQ(routerRoutes.listing({"--json", "--router", "empty"}), "{\"route\":{}}\n");
    EXPECT_EQ(routerRoutes.listing({"--router", ""}), routerRoutes.listing({}));
}

TEST(RouterRoutes, ARouterThatTheStateDoesNotHaveIsReported) {
    auto const [out, line] = routerRoutes.unknownName({"--router", "Prod,dmz"});
    EXPECT_EQ(out, routerRoutes.listing({"--router", "dmz"}));
    EXPECT_EQ(line, "--router: no router is named \"Prod\"; did you mean prod?");
}

TEST(RouterRoutes, ListsSelectWhatAnyOfTheirValuesSelects) {
    EXPECT_EQ(routerRoutes.listing({"--prefix", "0.0.0.0/0,::/0"}), routerRoutes.listing({}));
    EXPECT_EQ(routerRoutes.listing({"--prefix", "0.0.0.0/0", "--prefix", "::/0"}),
              routerRoutes.listing({}));
    EXPECT_EQ(routerRoutes.listing({"--router", "*"}), routerRoutes.listing({}));
    EXPECT_EQ(routerRoutes.listing({"--router", "dmz,dmz"}),
              routerRoutes.listing({"--router", "dmz"}));
    EXPECT_EQ(routerRoutes.listing({"--prefix", "10.0.0.0/8,10.0.0.0/8"}),
              routerRoutes.listing({"--prefix", "10.0.0.0/8"}));
}

TEST(RouterRoutes, AbsentStateIsAnEmptyTable) {
    for (auto const & state : {snapshotWith("received", "{}"), snapshotWith("routers", "{}"),
                               snapshotWith("routers", R"({"published":{},"vteps":{}})")}) {
        EXPECT_EQ(answer(state, {"router", "routes"}), routerRoutesHead + routerRoutesTotal(0));
        EXPECT_EQ(answer(state, {"--json", "router", "routes"}), "{\"route\":{}}\n");
    }
}

TEST(RouterRoutes, APrefixWithHostBitsIsRefusedWithTheOneProbablyMeant) {
    EXPECT_EQ(routerRoutes.refusedFilter({"--prefix", "10.1.2.3/24"}),
              "--prefix: '10.1.2.3/24': expected 10.1.2.0/24, with no bits set beyond the prefix "
              "length");
    EXPECT_EQ(routerRoutes.refusedFilter({"--prefix=2001:db8::1/64"}),
              "--prefix: '2001:db8::1/64': expected 2001:db8::/64, with no bits set beyond the "
              "prefix length");
}

TEST(RouterRoutes, RefusesInvalidValues) {
    for (char const * prefix : {"10.1.0.0", "10.1.0.0/33", "10.1.0.0/", "10.1.0.0/08", "10.1/16",
                                "::/129", "default", " ::/0", ""}) {
        EXPECT_EQ(routerRoutes.refusedFilter({"--prefix", prefix}),
                  "--prefix: '" + std::string(prefix) +
                      "': expected a prefix such as 10.1.0.0/16 or 2001:db8::/32");
    }
    EXPECT_EQ(routerRoutes.refusedFilter({"--prefix"}), "--prefix: no value; expected PREFIX");
    EXPECT_EQ(routerRoutes.refusedFilter({"--router", "--json"}),
              "--router: no value; expected NAME");
    routerRoutes.knowsNone({"--vni", "--switch", "--vtep", "--ip"});
}
