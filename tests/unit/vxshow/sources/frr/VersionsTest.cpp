#include "tests/unit/vxshow/sources/frr/FakeZebra.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

/// What zebra of each version answers. The documents are made after its sources, not captured.
namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

/// From the newest to the oldest.
std::vector<std::string> const versions{"master", "10.7", "10.6", "10.4", "10.1",
                                        "10.0",   "9.1",  "9.0",  "8.5",  "8.4"};

std::string contentOf(std::string const & path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The document of that name in that version: its own, or that of the nearest older one.
std::string shape(std::string const & version, std::string const & name) {
    if (version == "10.6-ipv6-vteps") {
        auto const own = FRR_SHAPES "/" + version + "/" + name + ".json";
        return std::filesystem::exists(own) ? contentOf(own) : shape("10.6", name);
    }
    auto at = std::find(versions.begin(), versions.end(), version);
    while (at != versions.end() &&
           !std::filesystem::exists(FRR_SHAPES "/" + *at + "/" + name + ".json")) {
        ++at;
    }
    EXPECT_NE(at, versions.end()) << version << " " << name;
    return at == versions.end() ? "" : contentOf(FRR_SHAPES "/" + *at + "/" + name + ".json");
}

FakeZebra zebraOf(std::string const & version) {
    FakeZebra zebra;
    for (auto const * const name :
         {"evpn-vni-detail", "evpn-vni-100", "evpn-vni-9002", "evpn-mac-vni-all",
          "evpn-mac-vni-all-detail", "evpn-mac-vni-100", "evpn-arp-cache-vni-all", "evpn-es-detail",
          "vrf-vni", "interface-vrf-red", "ip-route-vrf-red", "ipv6-route-vrf-red"}) {
        std::string command = name;
        auto const dash = command.find("arp-cache");
        std::replace(command.begin(), command.end(), '-', ' ');
        if (dash != std::string::npos) {
            command.replace(dash, 9, "arp-cache");
        }
        zebra["show " + command + " json"] = shape(version, "show-" + std::string(name));
    }
    zebra["show evpn mac vni 100 mac 02:10:00:00:00:33 json"] =
        shape(version, "show-evpn-mac-vni-100-mac-M33");
    return zebra;
}

bool hasLocalRoutes(std::string const & version) {
    return version != "8.4" && version != "8.5" && version != "9.0" && version != "9.1";
}

/// What every version comes to, but for routes.
constexpr auto rowsOfEveryVersion = R"(switch leaf1 id 00:00:5e:00:53:e1 vtep 192.0.2.1 router red
leaf1 vni 100
leaf1 vni 200
leaf1 mac 100 02:10:00:00:00:11 192.0.2.1 moves 0
leaf1 mac 100 02:10:00:00:00:44 192.0.2.1 moves 6
leaf1 flood 100 00:00:00:00:00:00 192.0.2.1
leaf1 flood 200 00:00:00:00:00:00 192.0.2.1
leaf1 arp 100 10.1.0.11 02:10:00:00:00:11 changes 0
leaf1 arp 100 2001:db8:1::11 02:10:00:00:00:11 changes 0
remote vni 100
remote vni 200
remote mac 100 02:10:00:00:00:22 192.0.2.2 moves 3
remote mac 100 02:10:00:00:00:33 192.0.2.2 moves 1
remote mac 100 02:10:00:00:00:33 192.0.2.3 moves 1
remote mac 100 02:10:00:00:00:66 192.0.2.3 moves 0
remote flood 100 00:00:00:00:00:00 192.0.2.2
remote flood 100 00:00:00:00:00:00 192.0.2.3
remote arp 100 10.1.0.22 02:10:00:00:00:22 changes 3
remote arp 100 10.1.0.33 02:10:00:00:00:33 changes 1
router red port 10.1.0.1/24 vni 100 02:90:00:00:00:02 192.0.2.1
router red port 2001:db8:1::1/64 vni 100 02:90:00:00:00:02 192.0.2.1
)";

constexpr auto rowsOfRoutes = R"(router red route 10.1.0.0/24
router red route 198.51.100.0/24 192.0.2.2 192.0.2.3
router red route 2001:db8:1::/64
router red route 2001:db8:51::/48 192.0.2.2
router red route fe80::/64
)";

constexpr auto rowsOfRoutesAndOwnAddresses = R"(router red route 10.1.0.0/24
router red route 10.1.0.1/32
router red route 198.51.100.0/24 192.0.2.2 192.0.2.3
router red route 2001:db8:1::/64
router red route 2001:db8:1::1/128
router red route 2001:db8:51::/48 192.0.2.2
router red route fe80::/64
)";

state::Selection macsOfVni(unsigned vni) {
    state::Selection selection;
    selection.routers = false;
    selection.arpTables = false;
    selection.vni = Vxlan::Vni(vni);
    return selection;
}

constexpr auto evpnIsNotActive =
    "EVPN is not active: zebra holds no VNIs, as when bgpd is down or does not advertise them; "
    "expects_evpn = false in the fabric file accepts a source without EVPN";

class FrrVersions : public testing::TestWithParam<std::string> {};

std::string nameOf(testing::TestParamInfo<std::string> const & info) {
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Of, FrrVersions, testing::ValuesIn(versions), nameOf);

TEST_P(FrrVersions, ComeToTheSameRows) {
    auto zebra = zebraOf(GetParam());
    auto const answer = zebra.ask();
    EXPECT_TRUE(answer.fits);
    EXPECT_EQ(linesOf(answer.facts),
              std::string(rowsOfEveryVersion) +
                  (hasLocalRoutes(GetParam()) ? rowsOfRoutesAndOwnAddresses : rowsOfRoutes));
    EXPECT_EQ(answer.findings.warning(), "1 entry left out: VRF \"blue\": no interfaces");
}

TEST_P(FrrVersions, OneVniIsTheSame) {
    auto zebra = zebraOf(GetParam());
    auto const answer = zebra.ask(macsOfVni(100));
    EXPECT_TRUE(answer.fits);
    EXPECT_FALSE(answer.findings.warning());
    EXPECT_EQ(macsOf(answer), macsOf(zebraOf(GetParam()).ask()));
    EXPECT_EQ(linesOf(answer.facts, "remote flood"),
              "remote flood 100 00:00:00:00:00:00 192.0.2.2\n"
              "remote flood 100 00:00:00:00:00:00 "
              "192.0.2.3\n");
}

TEST_P(FrrVersions, AMacBehindASegmentIsTheSame) {
    auto zebra = zebraOf(GetParam());
    auto selection = macsOfVni(100);
    selection.mac = Nolt::EthAddr::fromString("02:10:00:00:00:33");
    auto const answer = zebra.ask(selection);
    EXPECT_EQ(macsOf(answer), "remote mac 100 02:10:00:00:00:33 192.0.2.2 moves 1\n"
                              "remote mac 100 02:10:00:00:00:33 192.0.2.3 moves 1\n");
    EXPECT_EQ(zebra.runs.size(), 1U);
}

TEST_P(FrrVersions, MacAndArpCommandsTakeOneRun) {
    auto zebra = zebraOf(GetParam());
    state::Selection selection;
    selection.routers = false;
    zebra.ask(selection);
    // The short form of 8.4 does not name the segment.
    EXPECT_EQ(zebra.runs.size(), GetParam() == "8.4" ? 2U : 1U);
    zebra.runs.clear();
    zebra.ask(macsOfVni(100));
    EXPECT_EQ(zebra.runs.size(), GetParam() == "8.4" ? 2U : 1U);
    zebra.runs.clear();
    selection.macTables = false;
    zebra.ask(selection);
    EXPECT_EQ(zebra.runs.size(), 1U);
}

TEST_P(FrrVersions, AVniWithoutEntriesIsEmpty) {
    auto zebra = zebraOf(GetParam());
    zebra["show evpn vni 200 json"] =
        R"({"vni":200,"type":"L2","vrf":"default","vtepIp":"192.0.2.1"})";
    zebra["show evpn mac vni 200 json"] = shape(GetParam(), "no-macs.show-evpn-mac-vni-200");
    zebra["show evpn arp-cache vni 200 json"] =
        shape(GetParam(), "no-entries.show-evpn-arp-cache-vni-200");
    state::Selection selection;
    selection.routers = false;
    selection.vni = Vxlan::Vni(200);
    auto const answer = zebra.ask(selection);
    EXPECT_FALSE(answer.findings.warning());
    EXPECT_EQ(linesOf(answer.facts, "leaf1"), "leaf1 vni 200\n"
                                              "leaf1 flood 200 00:00:00:00:00:00 192.0.2.1\n");
}

TEST_P(FrrVersions, WithoutEvpnTheSourceHasFailed) {
    FakeZebra zebra;
    zebra["show evpn vni detail json"] = shape(GetParam(), "not-in-force.show-evpn-vni-detail");
    zebra["show evpn mac vni all json"] = shape(GetParam(), "not-in-force.show-evpn-mac-vni-all");
    zebra["show evpn arp-cache vni all json"] =
        shape(GetParam(), "not-in-force.show-evpn-arp-cache-vni-all");
    EXPECT_EQ(failureOf(zebra), evpnIsNotActive);
}

TEST(FrrVersion, AVniThatIsUnknownIsNotTheAbsenceOfEvpn) {
    FakeZebra zebra;
    zebra["show evpn vni 100 json"] = "{}\n";
    EXPECT_FALSE(zebra.ask(macsOfVni(100)).findings.warning());
    // Until FRR 8.5 nothing, then an empty object.
    for (auto const * const nothing : {"", "{}\n", "{ }\n", "{\n}\n"}) {
        zebra["show evpn json"] = nothing;
        EXPECT_EQ(failureOf(zebra, macsOfVni(100)), evpnIsNotActive) << nothing;
    }
}

TEST(FrrVersion, ASourceThatExpectsNoEvpnIsEmptyWithoutIt) {
    FakeZebra zebra;
    zebra["show evpn vni detail json"] = "";
    auto const answer = converse(zebra.run(), {.name = "leaf1", .expectsEvpn = false}, {});
    EXPECT_EQ(linesOf(answer.facts), "switch leaf1 id none\n");
    EXPECT_FALSE(answer.findings.warning());
}

TEST(FrrVersion, AVxlanDeviceThatIsUpWithoutAVniIsAFailure) {
    FakeZebra zebra;
    auto & devices = zebra["show interface vrf all json"];
    devices = R"({"eth0":{"operationalStatus":"up","interfaceType":"Other"},)"
              R"("vxlan9":{"operationalStatus":"down","interfaceType":"Vxlan"}})";
    EXPECT_EQ(failureOf(zebra), "accepted");
    devices = R"({"vxlan8":{"interfaceType":"Vxlan","operationalStatus":"up"}})";
    EXPECT_EQ(failureOf(zebra),
              "EVPN is not active: zebra holds no VNIs, but there is the VXLAN device \"vxlan8\"; "
              "expects_evpn = false in the fabric file accepts a source without EVPN");
    EXPECT_EQ(failureOf(zebra, macsOfVni(7)), "accepted");
}

TEST(FrrVersion, ATextAmongInterfacesIsSkipped) {
    auto zebra = zebraOf("8.5");
    zebra["show interface vrf red json"] =
        shape("8.5", "8.5.3-without-bfdd.show-interface-vrf-red");
    EXPECT_EQ(linesOf(zebra.ask().facts, "router red port"),
              "router red port 10.1.0.1/24 vni 100 02:90:00:00:00:02 192.0.2.1\n"
              "router red port 2001:db8:1::1/64 vni 100 02:90:00:00:00:02 192.0.2.1\n");
}

TEST(FrrVersion, TheNumberOfMacsCanStandAmongThem) {
    FakeZebra zebra;
    zebra["show evpn vni detail json"] =
        R"([{"vni":300,"type":"L2","tenantVrf":"default","vtepIp":"192.0.2.1"}])";
    zebra["show evpn mac vni all json"] = shape("10.6", "show-evpn-mac-vni-all.over-50-local");
    auto const macs = macsOf(zebra.ask());
    EXPECT_EQ(std::count(macs.begin(), macs.end(), '\n'), 52);
    zebra["show evpn mac vni all json"] = shape("10.6", "show-evpn-mac-vni-all-detail.over-50");
    auto const detailed = macsOf(zebra.ask());
    EXPECT_EQ(std::count(detailed.begin(), detailed.end(), '\n'), 51);
}

TEST(FrrVersion, EntriesWhoseVtepIsIpv6AreCounted) {
    auto zebra = zebraOf("10.6-ipv6-vteps");
    auto const answer = zebra.ask();
    EXPECT_TRUE(answer.fits);
    EXPECT_EQ(macsOf(answer), "");
    EXPECT_EQ(linesOf(answer.facts, "leaf1 arp") + linesOf(answer.facts, "remote arp"),
              "leaf1 arp 100 10.1.0.11 02:10:00:00:00:11 changes 0\n"
              "leaf1 arp 100 2001:db8:1::11 02:10:00:00:00:11 changes 0\n"
              "remote arp 100 10.1.0.22 02:10:00:00:00:22 changes 3\n"
              "remote arp 100 10.1.0.33 02:10:00:00:00:33 changes 1\n");
    EXPECT_EQ(answer.findings.warning(), "1 entry left out: VRF \"blue\": no interfaces; "
                                         "10 entries left out, their VTEP is IPv6, the first: "
                                         "02:10:00:00:00:11 in VNI 100 at 2001:db8:0:1::1");
    EXPECT_EQ(zebra.ask(macsOfVni(100)).findings.warning(),
              "9 entries left out, their VTEP is IPv6, the first: "
              "02:10:00:00:00:11 in VNI 100 at 2001:db8:0:1::1");
}

TEST(FrrVersion, NullIsTheAbsenceOfWhatIsOptional) {
    FakeZebra zebra;
    zebra["show evpn vni detail json"] =
        R"([{"vni":10,"type":"L2","vrf":null,"tenantVrf":"red","sviInterface":null,)"
        R"("vtepIp":"10.0.0.1","numRemoteVteps":0,"remoteVteps":null}])";
    zebra["show evpn mac vni all json"] = R"({"10":{"numMacs":0,"macs":null}})";
    zebra["show evpn arp-cache vni all json"] = R"({"10":{"numArpNd":1,"10.1.0.7":null}})";
    zebra["show evpn es detail json"] = "null\n";
    zebra["show vrf vni json"] = "null\n";
    auto const answer = zebra.ask();
    EXPECT_FALSE(answer.findings.warning());
    EXPECT_EQ(linesOf(answer.facts, "leaf1 "), "leaf1 vni 10\n"
                                               "leaf1 flood 10 00:00:00:00:00:00 10.0.0.1\n");
}

TEST(FrrVersion, AVniWithoutAVtepHasNone) {
    FakeZebra zebra;
    for (auto const * const vtep : {"", ",\"vtepIp\":\"(null)\"", ",\"vtepIp\":\"0.0.0.0\""}) {
        zebra["show evpn vni detail json"] =
            std::string(R"([{"vni":10,"type":"L2","vxlanInterface":"unknown")") + vtep + "}]";
        auto const answer = zebra.ask();
        EXPECT_FALSE(answer.findings.warning()) << vtep;
        EXPECT_EQ(linesOf(answer.facts, "leaf1 "), "leaf1 vni 10\n") << vtep;
    }
}

TEST(FrrVersion, AnArpEntryThatIsNeitherLocalNorRemoteIsSkipped) {
    for (auto const * const nothing : {"{}", "null"}) {
        auto zebra = zebraWithMacs("");
        zebra["show evpn arp-cache vni all json"] =
            std::string(R"({"10":{"numArpNd":1,"10.1.0.7":)") + nothing + "}}";
        auto const answer = zebra.ask();
        EXPECT_FALSE(answer.findings.warning());
        EXPECT_EQ(linesOf(answer.facts, "leaf1 arp"), "");
    }
}

TEST(FrrVersion, OnlyIngressReplicationFloodsToAVtep) {
    FakeZebra zebra;
    zebra["show evpn vni detail json"] =
        R"([{"vni":10,"type":"L2","vtepIp":"10.0.0.1","numRemoteVteps":3,"remoteVteps":)"
        R"([{"ip":"10.0.0.2","flood":"HER"},{"ip":"10.0.0.3","flood":"PIM-SM"},"10.0.0.4"]}])";
    auto const answer = zebra.ask();
    EXPECT_EQ(linesOf(answer.facts, "remote flood"),
              "remote flood 10 00:00:00:00:00:00 10.0.0.2\n"
              "remote flood 10 00:00:00:00:00:00 10.0.0.4\n");
    EXPECT_EQ(answer.findings.warning(),
              "1 entry left out: VNI 10: VTEP \"10.0.0.3\" floods \"PIM-SM\", expected \"HER\"");
}

TEST(FrrVersion, AnUnknownShapeNamesTheVersion) {
    FakeZebra zebra;
    zebra["show version"] = "FRRouting 11.0 (leaf7) on Linux(6.1.0-30-amd64).\nCopyright\n";
    zebra["show evpn vni detail json"] = R"([{"vni":10,"type":"L2","numRemoteVteps":{"n":2}}])";
    EXPECT_EQ(failureOf(zebra),
              "FRR 11.0: show evpn vni detail json: 1:41: [0].numRemoteVteps: found an object, "
              "expected a list of IPv4 "
              "addresses, or their number: this version's answer is not understood");
}

TEST(FrrVersion, AnUnknownVersionIsCalledUnknown) {
    FakeZebra zebra;
    zebra["show evpn vni detail json"] = R"([{"vni":10,"type":"L4"}])";
    for (auto const * const banner :
         {"", "% Unknown command: show version\n", "FRRouting\n", "FRRouting (leaf1)\n"}) {
        zebra["show version"] = banner;
        EXPECT_EQ(failureOf(zebra),
                  "FRR of unknown version: show evpn vni detail json: 1:19: [0].type: "
                  "found \"L4\", expected \"L2\" or \"L3\": this version's "
                  "answer is not understood");
    }
}

TEST(FrrVersion, ATerminalsLineEndsAreRead) {
    auto zebra = zebraOf("10.7");
    auto const expected = linesOf(zebra.ask().facts);
    auto const run = [&](std::vector<std::string> const & commands) {
        std::string crlf;
        for (char const c : zebra.printed(commands)) {
            crlf.append(c == '\n' ? "\r\n" : std::string(1, c));
        }
        return system::FileBytes::copyOf(crlf);
    };
    auto const answer =
        converse(run, {"leaf1", Nolt::EthAddr::fromString("00:00:5e:00:53:e1")}, {});
    EXPECT_EQ(linesOf(answer.facts), expected);
}

} // namespace vxshow::test
