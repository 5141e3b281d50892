#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/vxshow/sources/ovsdb/DatabaseAnswers.h"
#include "vxshow/sources/Merge.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <simdjson.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::ovsdb;

namespace {

namespace Cli = VxlanController::Cli;

using enum Table;

Answer labAnswer() {
    return readAnswer(capture("query.json"));
}

state::Mount labMount(Role role = Role::switches) {
    Merge mount;
    DatabaseSource source{"lab"};
    source.systemIds = {{"leaf1", Nolt::EthAddr::fromString("00:00:5e:00:53:e1")},
                        {"leaf2", Nolt::EthAddr::fromString("00:00:5e:00:53:e2")}};
    auto const answer =
        readDatabase(system::FileBytes::copyOf(capture("query.json")), Request::whole(), source);
    mount.add(answer.facts, role);
    return mount.mount();
}

std::string macReceived(state::Mount const & mount, std::string const & source = "") {
    auto const & state = mount.received;
    return rendered(Cli::vcsVniReceivedFactory(state.switches, state.sources, state.evpn, false, {},
                                               {}, Vex::String(source), Cli::vtepListFactory()));
}

std::string macAdvertised(state::Mount const & mount, std::string const & source = "") {
    auto const & state = mount.advertised;
    return rendered(Cli::vcsVniAdvertisedFactory(state.vnis, state.sources, state.evpn, false, {},
                                                 {}, Vex::String(source), Cli::vtepListFactory()));
}

std::string arpReceived(state::Mount const & mount) {
    return rendered(
        Cli::arpReceivedFactory(mount.received.switches, false, {}, {}, {}, Vex::String()));
}

std::string routerMap(state::Mount const & mount) {
    auto const & state = mount.routers;
    return rendered(Cli::vcsLRMapFactory(state.publishStatus, state.switchInfoDir, Vex::String(),
                                         Vex::String(), Cli::vtepListFactory()));
}

/// The answer with the rows of each table in another order.
std::string shuffled(std::string const & answer, unsigned seed) {
    std::mt19937 random(seed);
    simdjson::dom::parser parser;
    simdjson::padded_string const padded(answer);
    std::string text;
    for (simdjson::dom::element element : parser.parse(padded).get_array()) {
        std::vector<std::string> rows;
        for (simdjson::dom::element one : element["rows"].get_array()) {
            rows.push_back(simdjson::minify(one));
        }
        std::shuffle(rows.begin(), rows.end(), random);
        text.append(text.empty() ? "[" : ",").append("{\"rows\":[");
        for (std::size_t index = 0; index < rows.size(); ++index) {
            text.append(index == 0 ? "" : ",").append(rows[index]);
        }
        text.append("]}");
    }
    return text.append("]");
}

} // namespace

TEST(HardwareVtep, ReadsTheRealAnswerWithoutAnyFinding) {
    auto const answer = labAnswer();
    EXPECT_EQ(answer.findings.warning(), std::nullopt);
    EXPECT_TRUE(answer.fits);
    EXPECT_EQ(answer.facts.local.at("leaf1").macs.size(), 7);
    EXPECT_EQ(answer.facts.local.at("leaf2").macs.size(), 2);
    EXPECT_EQ(answer.facts.remote.macs.size(), 12);
}

TEST(HardwareVtep, TheOrderOfRowsDoesNotMatter) {
    auto const real = labAnswer();
    auto const answer = capture("query.json");
    for (unsigned seed = 1; seed <= 20; ++seed) {
        EXPECT_EQ(readAnswer(shuffled(answer, seed)).facts, real.facts) << seed;
    }
}

TEST(HardwareVtep, BindsRoutersToTheSwitchesWithAPortInTheirLogicalSwitches) {
    auto const state = labAnswer().facts;
    EXPECT_EQ(state.switches.at("leaf1").routers, std::set<std::string>{"tenant1"});
    EXPECT_EQ(state.switches.at("leaf2").routers, std::set<std::string>{"tenant1"});
    auto const & router = state.routers.at("tenant1");
    auto const at = [](std::string_view text) { return Nolt::IpGenAddrWithMask::fromString(text); };
    EXPECT_EQ(router.ports.size(), 3);
    EXPECT_EQ(router.ports.at(at("2001:db8:2::1/64")).begin()->vni, Vxlan::Vni(5002));
    EXPECT_EQ(router.routes.at(Nolt::IpGenPrefix::fromString("0.0.0.0/0")),
              (std::set{Nolt::IpGenAddr::fromString("192.168.1.254")}));
}

TEST(HardwareVtep, LeavesOutInvalidTextsOfARouter) {
    Database database;
    database[logicalRouter] = {
        R"({"name":"r","static_routes":["map",[["10.0.0/8","10.0.0.1"],["10.0.0.0/8",""],)"
        R"(["10.1.0.0/16","10.0.0.2"]]],"switch_binding":["map",[["",)" +
        row(1) + R"(],["10.0.0.1/8",)" + row(1) + R"(],["10.0.0.2/8",)" + row(2) + "]]]}"};
    auto const answer = readAnswer(database);
    auto const & router = answer.facts.routers.at("r");
    EXPECT_EQ(router.ports.size(), 1);
    EXPECT_EQ(router.routes.size(), 1);
    EXPECT_EQ(answer.findings.leftOut.count(), 4);
    EXPECT_EQ(answer.findings.leftOut.first(),
              "Logical_Router \"r\": static_routes \"10.0.0.0/8\" to \"\", expected an IPv4 or "
              "IPv6 address such as 10.0.0.1 or 2001:db8::1");
}

TEST(HardwareVtep, AStaticRouteWithHostBitsIsOneToItsNetwork) {
    Database database;
    database[logicalRouter] = {R"({"name":"r","static_routes":["map",[["10.1.2.3/16","10.0.0.1"],)"
                               R"(["10.1.0.0/16","10.0.0.2"]]],"switch_binding":["map",[]]})"};
    auto const answer = readAnswer(database);
    EXPECT_EQ(answer.facts.routers.at("r").routes.at(Nolt::IpGenPrefix::fromString("10.1.0.0/16")),
              (std::set{Nolt::IpGenAddr::fromString("10.0.0.1"),
                        Nolt::IpGenAddr::fromString("10.0.0.2")}));
    EXPECT_EQ(answer.findings.leftOut.count(), 0);
}

TEST(HardwareVtep, TheOnlySwitchHasTheSourcesSystemIdentifier) {
    auto const id = Nolt::EthAddr::fromString("00:00:5e:00:53:e9");
    auto const systemIds = [&](std::string const & answer) {
        auto const state =
            readDatabase(system::FileBytes::copyOf(answer), Request::whole(), {"lab", id, {}})
                .facts;
        std::vector<std::optional<Nolt::EthAddr>> all;
        for (auto const & [name, known] : state.switches) {
            all.push_back(known.systemId);
        }
        return all;
    };
    using Ids = std::vector<std::optional<Nolt::EthAddr>>;
    EXPECT_EQ(systemIds(Database().answer()), Ids{id});
    EXPECT_EQ(systemIds(capture("query.json")), (Ids{{}, {}}));
}

TEST(HardwareVtep, TheRequestForAVniNamesItsLogicalSwitchesAndThoseWithoutAKey) {
    auto const vni = Vxlan::Vni(5002);
    auto survey = capture("query.json");
    survey = survey.substr(0, survey.find("},{\"rows\"") + 1) + "]";
    auto const rows = logicalSwitchesOf(vni, system::FileBytes::copyOf(survey));
    // The keyless logical switch can have entries of any VNI, so it is named, too.
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(Request::of({.logicalSwitches = rows}).tables().size(), 8 + 2 * 4);
}

TEST(HardwareVtep, AnAnswerFitsWhileTheNamedLogicalSwitchesAreThoseOfTheVni) {
    Database database;
    auto const named = [](std::string_view text) { return *sources::ovsdb::readUuid(text); };
    auto const red = named("00000000-0000-4000-8000-000000000001");
    auto const keyless = named("00000000-0000-4000-8000-000000000002");
    auto const fits = [&](std::set<sources::ovsdb::Uuid> const & rows) {
        auto const request = Request::of({.logicalSwitches = rows});
        std::string answer = "[";
        for (auto const table : request.tables()) {
            answer.append(answer.size() == 1 ? "" : ",").append("{\"rows\":[");
            auto const & all = database[table];
            for (auto const & one : all) {
                answer.append(&one == &all.front() ? "" : ",").append(one);
            }
            answer.append("]}");
        }
        answer.append("]");
        return readDatabase(system::FileBytes::copyOf(answer), request, {"lab"}, Vxlan::Vni(5001))
            .fits;
    };
    EXPECT_TRUE(fits({red, keyless}));
    EXPECT_FALSE(fits({red}));
    database[logicalSwitch].push_back(R"({"_uuid":)" + row(3) +
                                      R"(,"name":"again","tunnel_key":5001})");
    EXPECT_FALSE(fits({red, keyless}));
}

TEST(HardwareVtepText, MacReceivedFromTheSwitches) {
    EXPECT_EQ(macReceived(labMount()), R"(         Received Mac Address Table
---------------------------------------------------------------------

Source            VNI         Mac Address       VTEP            Moves
----------------- ----------- ----------------- --------------- -----
leaf1             5001        0000.5e00.5301  10.0.0.1            0
leaf1             5001        0000.5e00.5302  10.0.0.1            0
leaf1             5002        0000.5e00.5305  10.0.0.1            0
leaf1             5002        0000.5e00.5306  10.0.0.1            0
leaf1             5002        0000.5e00.5307  10.0.0.1            0
leaf1             5003        0000.5e00.5308  10.0.0.1            0
leaf1             5003        0000.5e00.5309  10.0.0.1            0
leaf2             5001        0000.5e00.5303  10.0.0.2            0
leaf2             5001        0000.5e00.5304  10.0.0.12           0
Total Mac Addresses for this criterion: 9

         Received Flood Table
---------------------------------------------------------------------

Source            VNI         Mac Address       VTEP
----------------- ----------- ----------------- ---------------------
leaf1             5001        0000.0000.0000  10.0.0.1       
leaf1             5002        0000.0000.0000  10.0.0.1       
leaf1             5003        0000.0000.0000  10.0.0.1       
leaf2             5001        0000.0000.0000  10.0.0.2       
leaf2             5001        0000.0000.0000  10.0.0.12      
Total Mac Addresses for this criterion: 5
)");
}

TEST(HardwareVtepText, MacAdvertisedToTheSwitches) {
    EXPECT_EQ(macAdvertised(labMount()), R"(            Advertised Mac Address Table
-----------------------------------------------------------------------------

VNI         Mac Address       VTEP            Moves
----------- ----------------- --------------- -----
5001        0000.5e00.5311  10.1.0.1            0
5001        0000.5e00.5312  10.1.0.1            0
5001        0000.5e00.5313  10.1.0.2            0
5001        0000.5e00.531a  10.1.0.2            0
5002        0000.5e00.5315  10.1.0.1            0
5002        0000.5e00.5316  10.1.0.3            0
5002        0000.5e00.5317  10.1.0.3            0
5003        0000.5e00.5319  10.1.0.2            0
5003        0000.5e00.531b  10.1.0.3            0
5003        0000.5e00.531c  10.1.0.3            0
Total Mac Addresses for this criterion: 10

            Advertised Flood Table
---------------------------------------------------

VNI         Mac Address       VTEP(s)
----------- ----------------- -----------------------------------------------
5001        0000.0000.0000  10.1.0.1        10.1.0.2        10.1.0.3       
                              10.1.0.4       
5001        0100.5e01.0203  10.1.0.1        10.1.0.2       
5002        0000.5e00.5318  10.1.0.2        10.1.0.3       
5002        0000.0000.0000  10.1.0.9       
5003        0000.0000.0000  10.1.0.2        10.1.0.3       
Total Mac Addresses for this criterion: 5
)");
}

TEST(HardwareVtepText, ArpReceivedFromTheSwitches) {
    EXPECT_EQ(arpReceived(labMount()), R"(                        Received ARP Table
-------------------------------------------------------------------------
Switch              VNI      IP Address      MAC Address        Changes
------------------- -------- --------------- ------------------ ---------
leaf1               5001     192.168.1.11    0000.5e00.5301     0        
leaf1               5002     192.168.2.15    0000.5e00.5305     0        
leaf1               5002     2001:db8:2::17  0000.5e00.5307     0        
leaf1               5003     192.168.3.18    0000.5e00.5308     0        
leaf2               5001     192.168.1.13    0000.5e00.5303     0        

Total IP addresses for this criterion: 5
)");
}

TEST(HardwareVtepText, RouterMap) {
    EXPECT_EQ(routerMap(labMount()),
              R"(--------------------------------------------------------------------------------
Name                                           VTEP            Switch           
--------------------------------------------------------------------------------
tenant1                                        10.0.0.1        00:00:5e:00:53:e1
                                               10.0.0.12       00:00:5e:00:53:e2

Total entries for this criterion: 2

)");
}

TEST(HardwareVtepText, MacReceivedFromTheHardwareSwitchController) {
    EXPECT_EQ(macReceived(labMount(Role::hsc), "hsc"), R"(         Received Mac Address Table
---------------------------------------------------------------------

Source            VNI         Mac Address       VTEP            Moves
----------------- ----------- ----------------- --------------- -----
HSC               5001        0000.5e00.5311  10.1.0.1            0
HSC               5001        0000.5e00.5312  10.1.0.1            0
HSC               5001        0000.5e00.5313  10.1.0.2            0
HSC               5001        0000.5e00.531a  10.1.0.2            0
HSC               5002        0000.5e00.5315  10.1.0.1            0
HSC               5002        0000.5e00.5316  10.1.0.3            0
HSC               5002        0000.5e00.5317  10.1.0.3            0
HSC               5003        0000.5e00.5319  10.1.0.2            0
HSC               5003        0000.5e00.531b  10.1.0.3            0
HSC               5003        0000.5e00.531c  10.1.0.3            0
Total Mac Addresses for this criterion: 10

         Received Flood Table
---------------------------------------------------------------------

Source            VNI         Mac Address       VTEP
----------------- ----------- ----------------- ---------------------
HSC               5001        0000.0000.0000  10.1.0.1       
HSC               5001        0000.0000.0000  10.1.0.2       
HSC               5001        0000.0000.0000  10.1.0.3       
HSC               5001        0000.0000.0000  10.1.0.4       
HSC               5001        0100.5e01.0203  10.1.0.1       
HSC               5001        0100.5e01.0203  10.1.0.2       
HSC               5002        0000.5e00.5318  10.1.0.2       
HSC               5002        0000.5e00.5318  10.1.0.3       
HSC               5002        0000.0000.0000  10.1.0.9       
HSC               5003        0000.0000.0000  10.1.0.2       
HSC               5003        0000.0000.0000  10.1.0.3       
Total Mac Addresses for this criterion: 11
)");
}

TEST(HardwareVtepText, MacReceivedFromEvpn) {
    EXPECT_EQ(macReceived(labMount(Role::evpn), "evpn"),
              R"(         Received Mac Address Table
---------------------------------------------------------------------

Source            VNI         Mac Address       VTEP            Moves
----------------- ----------- ----------------- --------------- -----
EVPN              5001        0000.5e00.5311  10.1.0.1            0
EVPN              5001        0000.5e00.5312  10.1.0.1            0
EVPN              5001        0000.5e00.5313  10.1.0.2            0
EVPN              5001        0000.5e00.531a  10.1.0.2            0
EVPN              5002        0000.5e00.5315  10.1.0.1            0
EVPN              5002        0000.5e00.5316  10.1.0.3            0
EVPN              5002        0000.5e00.5317  10.1.0.3            0
EVPN              5002        0000.5e00.5318  10.1.0.2            0
EVPN              5003        0000.5e00.5319  10.1.0.2            0
EVPN              5003        0000.5e00.531b  10.1.0.3            0
EVPN              5003        0000.5e00.531c  10.1.0.3            0
Total Mac Addresses for this criterion: 11

         Received Flood Table
---------------------------------------------------------------------

Source            VNI         Mac Address       VTEP
----------------- ----------- ----------------- ---------------------
EVPN              5001        0000.0000.0000  10.1.0.1       
EVPN              5001        0000.0000.0000  10.1.0.2       
EVPN              5001        0000.0000.0000  10.1.0.3       
EVPN              5001        0000.0000.0000  10.1.0.4       
EVPN              5002        0000.0000.0000  10.1.0.9       
EVPN              5003        0000.0000.0000  10.1.0.2       
EVPN              5003        0000.0000.0000  10.1.0.3       
Total Mac Addresses for this criterion: 7
)");
}

} // namespace vxshow::test
