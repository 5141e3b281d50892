#include "vxshow/state/snapshot/RouterStatus.h"

#include "state/LRStatusV2.h"
#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace state;
using namespace state::snapshot;

namespace {

using VxlanController::LRIpPortV2;
using VxlanController::LRStatusV2;
using VxlanController::PortVlanPairV2;

Nolt::EthAddr routerMac(std::string_view text) {
    return Nolt::EthAddr::fromString(text);
}

Nolt::IpGenAddr routerIp(std::string_view text) {
    return Nolt::IpGenAddr::fromString(text);
}

Nolt::IpGenAddrWithMask masked(std::string_view text) {
    return Nolt::IpGenAddrWithMask::fromString(text);
}

Nolt::IpGenPrefix prefix(std::string_view text) {
    return Nolt::IpGenPrefix::fromString(text);
}

std::string withStatus(std::string const & status) {
    return withRouters("{\"status\":" + status + "}");
}

Vex::Ptr<LRStatusV2 const> routerOf(Mount const & mount, std::string_view name) {
    return Vex::dynamicPtr<LRStatusV2 const>(mount.routers.lRStatusDir->entityPtr(Vex::Name(name)));
}

/// The router that is mounted for `router`, its published tables.
Vex::Ptr<LRStatusV2 const> mountedRouter(std::string const & router) {
    return routerOf(mounted(withStatus("{\"prod\":" + router + "}")), "prod");
}

TEST(RouterStatus, FillsThePorts) {
    auto const router = mountedRouter(R"({"ports":{
        "10.0.0.1/8":{"vni":16777215,"mac":"02:00:00:00:00:01","vtep":"10.9.0.1"},
        "10.0.0.2/8":{"vni":0,"mac":"0200.0000.0002","vtep":"2001:db8::1"},
        "10.0.0.1/32":{"mac":"02:00:00:00:00:03","vni":10},
        "2001:db8:0::1/0":{"vni":11,"mac":"00:00:00:00:00:00"}}})");
    ASSERT_EQ(router->ipPort().size(), 4);
    auto const port = [&](char const * text) {
        return router->ipPort().find(masked(text))->element();
    };
    EXPECT_EQ(port("10.0.0.1/8"), LRIpPortV2(masked("10.0.0.1/8"), Vxlan::Vni(16777215),
                                             routerMac("02:00:00:00:00:01"), routerIp("10.9.0.1")));
    EXPECT_EQ(port("10.0.0.2/8"),
              LRIpPortV2(masked("10.0.0.2/8"), Vxlan::Vni(0), routerMac("02:00:00:00:00:02"),
                         routerIp("2001:db8::1")));
    EXPECT_EQ(port("10.0.0.1/32"), LRIpPortV2(masked("10.0.0.1/32"), Vxlan::Vni(10),
                                              routerMac("02:00:00:00:00:03"), Nolt::IpGenAddr()));
    EXPECT_EQ(port("2001:db8::1/0").vni(), Vxlan::Vni(11));
}

TEST(RouterStatus, FillsTheUplinks) {
    auto const router = mountedRouter(R"({"uplinks":{
        "10.0.0.1/31":{"ports":[{"vlan":65535,"port":"Ethernet1"},{"port":"Ethernet1"},
                                {"port":"a\u0000b","vlan":7},{"port":"","vlan":7}],
                       "vtep":"2001:db8::1","mac":"02:00:00:00:00:01"},
        "2001:db8::1/127":{"mac":"02:00:00:00:00:02","ports":[]},
        "10.0.0.9/8":{"mac":"02:00:00:00:00:03"}}})");
    ASSERT_EQ(router->ipUplinkPort().size(), 3);
    auto const & first = router->ipUplinkPort().find(masked("10.0.0.1/31"))->element();
    EXPECT_EQ(first.ip(), masked("10.0.0.1/31"));
    EXPECT_EQ(first.mac(), routerMac("02:00:00:00:00:01"));
    EXPECT_EQ(first.vtep(), routerIp("2001:db8::1"));
    EXPECT_EQ(first.portVlan().size(), 4);
    using namespace std::string_view_literals;
    for (auto const & [port, vlan] :
         {std::pair{"Ethernet1"sv, 65535}, {"Ethernet1"sv, 0}, {"a\0b"sv, 7}, {""sv, 7}}) {
        EXPECT_TRUE(first.portVlan().has(
            PortVlanPairV2{Vex::String(port), Bridging::VlanIdOrNone(static_cast<Vex::U16>(vlan))}))
            << port << ' ' << vlan;
    }
    auto const & second = router->ipUplinkPort().find(masked("2001:db8::1/127"))->element();
    EXPECT_TRUE(second.portVlan().empty());
    EXPECT_EQ(second.vtep(), Nolt::IpGenAddr());
    EXPECT_TRUE(router->ipUplinkPort().find(masked("10.0.0.9/8"))->element().portVlan().empty());
}

TEST(RouterStatus, FillsTheRoutes) {
    auto const router = mountedRouter(R"({"routes":{
        "10.0.0.0/8":["10.0.0.2","2001:db8::1","10.0.0.1"],
        "10.0.0.0/9":[],
        "2001:DB8:0::/32":["::"],
        "::/0":["0.0.0.0"],
        "0.0.0.0/0":["10.0.0.1"]}})");
    ASSERT_EQ(router->route().size(), 5);
    auto const nexthops = [&](char const * text) {
        return router->route().find(prefix(text))->element().nexthop();
    };
    EXPECT_EQ(nexthops("10.0.0.0/8").size(), 3);
    EXPECT_TRUE(nexthops("10.0.0.0/8").find(routerIp("2001:db8::1")));
    EXPECT_TRUE(nexthops("10.0.0.0/9").empty());
    EXPECT_TRUE(nexthops("2001:db8::/32").find(routerIp("::")));
    EXPECT_TRUE(nexthops("::/0").find(routerIp("0.0.0.0")));
    EXPECT_TRUE(nexthops("0.0.0.0/0").find(routerIp("10.0.0.1")));
}

TEST(RouterStatus, LeavesMissingAndEmptyTablesEmpty) {
    for (auto const * text : {"{}", R"({"ports":{},"uplinks":{},"routes":{}})"}) {
        auto const router = mountedRouter(text);
        EXPECT_TRUE(router->ipPort().empty());
        EXPECT_TRUE(router->ipUplinkPort().empty());
        EXPECT_TRUE(router->route().empty());
    }
}

TEST(RouterStatus, KeepsRouterNamesUnchanged) {
    auto const mount = mounted(
        withStatus(R"({"prod":{},"Prod":{},"":{},"a\u0000b":{},"\ud83c\udf3f":{},"100%":{}})"));
    EXPECT_EQ(mount.routers.lRStatusDir->size(), 6);
    using namespace std::string_view_literals;
    for (auto const name : {"prod"sv, "Prod"sv, ""sv, "a\0b"sv, "\U0001f33f"sv, "100%"sv}) {
        ASSERT_TRUE(routerOf(mount, name)) << name;
        EXPECT_EQ(routerOf(mount, name)->name(), name);
    }
}

TEST(RouterStatus, ReadsAHundredThousandRoutes) {
    std::string text = R"({"routes":{)";
    for (unsigned number = 0; number < 100000; ++number) {
        text.append(number == 0 ? "\"" : ",\n\"");
        text.append(Nolt::IpAddr(0x0A000000 + number).stringValue()).append(R"(/32":["192.0.2.)");
        text.append(std::to_string(number % 200)).append("\"]");
    }
    auto const router = mountedRouter(text + "}}");
    EXPECT_EQ(router->route().size(), 100000);
    EXPECT_TRUE(router->route()
                    .find(prefix("10.1.134.159/32"))
                    ->element()
                    .nexthop()
                    .find(routerIp("192.0.2.199")));
}

struct RefusedRouterStatus {
    char const * router;
    char const * error;
};

void expectRouterStatusRefused(std::initializer_list<RefusedRouterStatus> all) {
    for (auto const & refused : all) {
        auto const document = withStatus("{\"prod\":" + std::string(refused.router) + "}");
        EXPECT_EQ(refusalBehind("routers.status.prod", document), refused.error) << refused.router;
    }
}

TEST(RouterStatus, RefusesAnInvalidStatus) {
    EXPECT_EQ(refusalBehind("routers", withStatus("[]")),
              ".status: found an array, expected an object whose members are logical routers");
    EXPECT_EQ(refusalBehind("routers", withStatus(R"({"prod":{},"pro\u0064":{}})")),
              R"(.status: found "pro\u0064" again, expected it once)");
    expectRouterStatusRefused(
        {{"[]", R"(: found an array, expected an object of "ports", "uplinks" and "routes")"},
         {R"({"route":{}})", R"(: found "route", expected "ports", "uplinks" or "routes")"},
         {R"({"ports":{},"ports":{}})", R"(: found "ports" again, expected it once)"}});
}

TEST(RouterStatus, RefusesBadPorts) {
    expectRouterStatusRefused(
        {{R"({"ports":[]})",
          ".ports: found an array, expected an object whose members are addresses with their "
          "prefix length"},
         {R"({"ports":{"10.0.0.1":{}}})",
          R"(.ports: found "10.0.0.1", expected an address with its prefix length such as )"
          "10.1.2.3/24 or 2001:db8::1/64"},
         {R"({"ports":{"10.0.0.1/33":{}}})",
          R"(.ports: found "10.0.0.1/33", expected an address with its prefix length such as )"
          "10.1.2.3/24 or 2001:db8::1/64"},
         {R"({"ports":{"::1/129":{}}})",
          R"(.ports: found "::1/129", expected an address with its prefix length such as )"
          "10.1.2.3/24 or 2001:db8::1/64"},
         {R"({"ports":{"":{}}})",
          R"(.ports: found "", expected an address with its prefix length such as )"
          "10.1.2.3/24 or 2001:db8::1/64"},
         {R"({"ports":{"::1/64":{"vni":1,"mac":"02:00:00:00:00:01"},)"
          R"("0::1/64":{"vni":1,"mac":"02:00:00:00:00:01"}}})",
          R"(.ports: found "0::1/64" again, expected it once)"},
         {R"({"ports":{"10.0.0.1/8":7}})",
          R"(.ports."10.0.0.1/8": found 7, expected an object of "vni", "mac" and "vtep")"},
         {R"({"ports":{"10.0.0.1/8":{"mac":"02:00:00:00:00:01"}}})",
          R"(.ports."10.0.0.1/8": found an object, expected "vni" in it)"},
         {R"({"ports":{"10.0.0.1/8":{"vni":1}}})",
          R"(.ports."10.0.0.1/8": found an object, expected "mac" in it)"},
         {R"({"ports":{"10.0.0.1/8":{"vni":16777216}}})",
          R"(.ports."10.0.0.1/8".vni: found 16777216, expected a whole number from 0 to 16777215)"},
         {R"({"ports":{"10.0.0.1/8":{"vni":"1"}}})",
          R"(.ports."10.0.0.1/8".vni: found "1", expected a whole number from 0 to 16777215)"},
         {R"({"ports":{"10.0.0.1/8":{"mac":"leaf1"}}})",
          R"(.ports."10.0.0.1/8".mac: found "leaf1", expected an Ethernet address such as )"
          "00:1c:73:0a:0b:0c"},
         {R"({"ports":{"10.0.0.1/8":{"vtep":""}}})",
          R"(.ports."10.0.0.1/8".vtep: found "", expected an IPv4 or IPv6 address such as )"
          "10.0.0.1 or 2001:db8::1"},
         {R"({"ports":{"10.0.0.1/8":{"vlan":1}}})",
          R"(.ports."10.0.0.1/8": found "vlan", expected "vni", "mac" or "vtep")"}});
}

TEST(RouterStatus, RefusesBadUplinks) {
    expectRouterStatusRefused(
        {{R"({"uplinks":7})",
          ".uplinks: found 7, expected an object whose members are addresses with their prefix "
          "length"},
         {R"({"uplinks":{"10.0.0.1/8":{}}})",
          R"(.uplinks."10.0.0.1/8": found an object, expected "mac" in it)"},
         {R"({"uplinks":{"10.0.0.1/8":{"vni":1}}})",
          R"(.uplinks."10.0.0.1/8": found "vni", expected "mac", "vtep" or "ports")"},
         {R"({"uplinks":{"10.0.0.1/8":{"mac":"02:00:00:00:00:01"},)"
          R"("10.0.0.1/\u0038":{"mac":"02:00:00:00:00:01"}}})",
          R"(.uplinks: found "10.0.0.1/\u0038" again, expected it once)"},
         {R"({"uplinks":{"10.0.0.1/8":{"ports":{}}}})",
          R"(.uplinks."10.0.0.1/8".ports: found an object, expected a list of ports)"},
         {R"({"uplinks":{"10.0.0.1/8":{"ports":["Ethernet1"]}}})",
          R"(.uplinks."10.0.0.1/8".ports[0]: found "Ethernet1", expected an object of "port" )"
          R"(and "vlan")"},
         {R"({"uplinks":{"10.0.0.1/8":{"ports":[{"port":"a"},{"vlan":1}]}}})",
          R"(.uplinks."10.0.0.1/8".ports[1]: found an object, expected "port" in it)"},
         {R"({"uplinks":{"10.0.0.1/8":{"ports":[{"port":1}]}}})",
          R"(.uplinks."10.0.0.1/8".ports[0].port: found 1, expected the name of a port)"},
         {R"({"uplinks":{"10.0.0.1/8":{"ports":[{"port":"a","vlan":65536}]}}})",
          R"(.uplinks."10.0.0.1/8".ports[0].vlan: found 65536, expected a whole number from 0 )"
          "to 65535"},
         {R"({"uplinks":{"10.0.0.1/8":{"ports":[{"port":"a","vlan":1},{"port":"b","vlan":1},)"
          R"({"vlan":1,"port":"a"}]}}})",
          R"(.uplinks."10.0.0.1/8".ports[2]: found an object again, expected it once)"},
         {R"({"uplinks":{"10.0.0.1/8":{"ports":[{"port":"a"},{"port":"a","vlan":0}]}}})",
          R"(.uplinks."10.0.0.1/8".ports[1]: found an object again, expected it once)"}});
}

TEST(RouterStatus, RefusesBadRoutes) {
    expectRouterStatusRefused(
        {{R"({"routes":[]})",
          ".routes: found an array, expected an object whose members are prefixes"},
         {R"({"routes":{"default":[]}})",
          R"(.routes: found "default", expected a prefix such as 10.1.0.0/16 or 2001:db8::/32)"},
         {R"({"routes":{"":[]}})",
          R"(.routes: found "", expected a prefix such as 10.1.0.0/16 or 2001:db8::/32)"},
         {R"({"routes":{"10.0.0.0/08":[]}})",
          R"(.routes: found "10.0.0.0/08", expected a prefix such as 10.1.0.0/16 or )"
          "2001:db8::/32"},
         {R"({"routes":{"10.1.2.3/24":[]}})",
          R"(.routes: found "10.1.2.3/24", expected 10.1.2.0/24, with no bits set beyond the )"
          "prefix length"},
         {R"({"routes":{"2001:db8::1/32":[]}})",
          R"(.routes: found "2001:db8::1/32", expected 2001:db8::/32, with no bits set beyond )"
          "the prefix length"},
         {R"({"routes":{"::/0":[],"0::/0":[]}})",
          R"(.routes: found "0::/0" again, expected it once)"},
         {R"({"routes":{"::/0":{}}})",
          R"(.routes."::/0": found an object, expected a list of IP addresses)"},
         {R"({"routes":{"::/0":["::1",null]}})",
          R"(.routes."::/0"[1]: found null, expected an IPv4 or IPv6 address such as 10.0.0.1 )"
          "or 2001:db8::1"},
         {R"({"routes":{"::/0":["::1","::2","0::1"]}})",
          R"(.routes."::/0"[2]: found "0::1" again, expected it once)"}});
}

} // namespace

} // namespace vxshow::test
