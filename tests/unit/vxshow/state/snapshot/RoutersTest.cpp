#include "vxshow/state/snapshot/Routers.h"

#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace state;
using namespace state::snapshot;

namespace {

Mount::Routers routersOf(std::string_view routers) {
    return mounted(withRouters(routers)).routers;
}

Controller::SystemId system(std::string_view mac) {
    return Controller::SystemId(Nolt::EthAddr::fromString(mac));
}

TEST(Routers, DistinguishesEmptyStateFromAbsentState) {
    auto const nothing = routersOf("{}");
    EXPECT_FALSE(nothing.switchInfoDir);
    EXPECT_FALSE(nothing.publishStatus);
    EXPECT_FALSE(nothing.lRStatusDir);

    auto const published = routersOf(R"({"published":{}})");
    EXPECT_FALSE(published.switchInfoDir);
    EXPECT_TRUE(published.publishStatus);
    EXPECT_FALSE(published.lRStatusDir);

    auto const status = routersOf(R"({"status":{}})");
    EXPECT_FALSE(status.switchInfoDir);
    EXPECT_FALSE(status.publishStatus);
    ASSERT_TRUE(status.lRStatusDir);
    EXPECT_EQ(status.lRStatusDir->size(), 0);
}

TEST(Routers, ReadsWhatEachSystemPublishes) {
    auto const status = routersOf(R"({"published":{
        "00:1c:73:00:00:01":{"vxlancontroller/version2/logicalRouter/prod":"Vxlan",
                             "a\u0000b":"k\u0000","":""},
        "001C.7300.0002":{}}})")
                            .publishStatus;
    auto const first = status->system(system("00:1c:73:00:00:01"));
    ASSERT_TRUE(first);
    EXPECT_EQ(first->publishedMount().size(), 3);
    auto const kindOf = [&](std::string_view path) {
        auto const * const slot = first->publishedMount().find(Vex::String(path));
        return slot ? slot->element().kind() : Vex::String("absent");
    };
    using namespace std::string_view_literals;
    EXPECT_EQ(kindOf("vxlancontroller/version2/logicalRouter/prod"), "Vxlan");
    EXPECT_EQ(kindOf("a\0b"sv), "k\0"sv);
    EXPECT_EQ(kindOf(""), "");
    ASSERT_TRUE(status->system(system("00:1c:73:00:00:02")));
    EXPECT_TRUE(status->system(system("00:1c:73:00:00:02"))->publishedMount().empty());
    EXPECT_FALSE(status->system(system("00:1c:73:00:00:03")));
}

TEST(Routers, AcceptsMembersInAnyOrder) {
    auto const routers = routersOf(R"({
        "status":{"prod":{}},
        "vteps":{"10.0.0.1":{"active":true}},
        "published":{"00:1c:73:00:00:01":{}},
        "switches":{"leaf1":{"vteps":["10.0.0.1"]}}})");
    EXPECT_EQ(routers.lRStatusDir->size(), 1);
    EXPECT_TRUE(routers.publishStatus->system(system("00:1c:73:00:00:01")));
    EXPECT_EQ(routers.switchInfoDir->switchInfo("leaf1")->vtepMap().size(), 1);
}

struct RefusedRouters {
    char const * routers;
    char const * error;
};

void expectRoutersRefused(std::initializer_list<RefusedRouters> all) {
    for (auto const & refused : all) {
        EXPECT_EQ(refusalBehind("routers", withRouters(refused.routers)), refused.error)
            << refused.routers;
    }
}

TEST(Routers, RefusesInvalidRouterState) {
    expectRoutersRefused(
        {{"[]", ": found an array, expected an object of what is known of logical routers"},
         {"null", ": found null, expected an object of what is known of logical routers"},
         {R"({"routes":{}})",
          R"(: found "routes", expected "switches", "vteps", "published", "status" or "switchNames")"},
         {R"({"vteps":{},"switches":{},"vteps":{}})", R"(: found "vteps" again, expected it once)"},
         {R"({"switches":{},"switches":{}})", R"(: found "switches" again, expected it once)"},
         {R"({"published":{},"published":{}})", R"(: found "published" again, expected it once)"},
         {R"({"status":{},"status":{}})", R"(: found "status" again, expected it once)"},
         {R"({"switchNames":[]})",
          ".switchNames: found an array, expected an object whose members are names of switches"},
         {R"({"switchNames":{"a":[],"a":[]}})",
          R"(.switchNames: found "a" again, expected it once)"},
         {R"({"switchNames":{"a":["x","x"]}})",
          R"(.switchNames.a[1]: found "x" again, expected it once)"}});
}

TEST(Routers, RefusesBadPublishedPaths) {
    expectRoutersRefused(
        {{R"({"published":[]})",
          ".published: found an array, expected an object whose members are system identifiers"},
         {R"({"published":{"leaf1":{}}})",
          R"(.published: found "leaf1", expected an Ethernet address such as 00:1c:73:0a:0b:0c)"},
         {R"({"published":{"00:1c:73:00:00:01":{},"001c.7300.0001":{}}})",
          R"(.published: found "001c.7300.0001" again, expected it once)"},
         {R"({"published":{"00:1c:73:00:00:01":["a"]}})",
          R"(.published."00:1c:73:00:00:01": found an array, expected an object whose members )"
          "are published paths"},
         {R"({"published":{"00:1c:73:00:00:01":{"a":null}}})",
          R"(.published."00:1c:73:00:00:01".a: found null, expected the kind of what is )"
          "published there, a text"},
         {R"({"published":{"00:1c:73:00:00:01":{"a":"Vxlan","\u0061":"Vxlan"}}})",
          R"(.published."00:1c:73:00:00:01": found "\u0061" again, expected it once)"}});
}

} // namespace

} // namespace vxshow::test
