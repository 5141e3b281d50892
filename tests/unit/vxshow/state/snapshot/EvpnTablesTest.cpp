#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include "state/FloodTable.h"
#include "state/HostTable.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace state;
using namespace state::snapshot;

namespace {

Nolt::EthAddr hostMac(std::string_view text) {
    return Nolt::EthAddr::fromString(text);
}

Nolt::IpAddr hostIp(std::string_view text) {
    return Nolt::IpAddr::fromString(text);
}

std::string withEvpn(std::string_view evpn) {
    return withReceived(R"({"evpn":{"EVPN":)" + std::string(evpn) + "}}");
}

auto mountedEvpn(std::string_view evpn) {
    return mounted(withEvpn(evpn)).received.evpn->hostFloodTable("EVPN");
}

TEST(EvpnTables, FillsTheHostTable) {
    auto const hosts = mountedEvpn(R"({"hosts":{
        "10":{"02:00:00:00:00:01":{"vtep":"10.0.0.1","moves":3},
              "02:00:00:00:00:02":{"vtep":"10.0.0.2"}},
        "11":{"02-00-00-00-00-01":{"vtep":"10.0.0.3"}}}})")
                           ->hostTable();
    ASSERT_TRUE(hosts);
    EXPECT_EQ(hosts->size(), 3);
    using VcsEvpn::Host;
    EXPECT_EQ(hosts->host({hostMac("02:00:00:00:00:01"), Vxlan::Vni(10)}),
              Host(hostIp("10.0.0.1"), 3));
    EXPECT_EQ(hosts->host({hostMac("02:00:00:00:00:02"), Vxlan::Vni(10)}),
              Host(hostIp("10.0.0.2"), 0));
    EXPECT_EQ(hosts->host({hostMac("02:00:00:00:00:01"), Vxlan::Vni(11)}),
              Host(hostIp("10.0.0.3"), 0));
}

TEST(EvpnTables, KeepsAHostWithoutAVtepAlthoughReadersTreatItAsAbsent) {
    auto const hosts =
        mountedEvpn(R"({"hosts":{"10":{"02:00:00:00:00:01":{"vtep":"0.0.0.0"}}}})")->hostTable();
    EXPECT_EQ(hosts->size(), 1);
    EXPECT_EQ(hosts->host({hostMac("02:00:00:00:00:01"), Vxlan::Vni(10)}), VcsEvpn::Host());
}

TEST(EvpnTables, FillsTheFloodTableWithLiveEntries) {
    auto const flood =
        mountedEvpn(R"({"flood":{"10":["10.0.0.1","10.0.0.2"],"11":["10.0.0.1"],"12":[]}})")
            ->floodTable();
    ASSERT_TRUE(flood);
    EXPECT_EQ(flood->size(), 3);
    for (auto const & [vni, vtep] :
         {std::pair{10, "10.0.0.1"}, {10, "10.0.0.2"}, {11, "10.0.0.1"}}) {
        EXPECT_NE(flood->floodEntry({Vxlan::Vni(static_cast<Vex::U32>(vni)), hostIp(vtep)}),
                  VcsEvpn::FloodEntry());
    }
}

TEST(EvpnTables, DistinguishesAMissingTableFromAnEmptyOne) {
    EXPECT_FALSE(mountedEvpn("{}")->hostTable());
    EXPECT_FALSE(mountedEvpn("{}")->floodTable());
    auto const empty = mountedEvpn(R"({"hosts":{},"flood":{}})");
    ASSERT_TRUE(empty->hostTable());
    EXPECT_EQ(empty->hostTable()->size(), 0);
    ASSERT_TRUE(empty->floodTable());
    EXPECT_EQ(empty->floodTable()->size(), 0);
}

TEST(EvpnTables, ReadsMoreHostsThanTheInitialCapacity) {
    std::string text = R"({"hosts":{"10":{)";
    for (unsigned number = 0; number < 20000; ++number) {
        Nolt::EthAddr::Bytes const bytes{
            2, 0, 0, 0, static_cast<Vex::U8>(number >> 8), static_cast<Vex::U8>(number)};
        text.append(number == 0 ? "\"" : ",\"").append(Nolt::EthAddr(bytes).stringValue());
        text.append(R"(":{"vtep":"10.0.0.1","moves":)").append(std::to_string(number)).append("}");
    }
    auto const hosts = mountedEvpn(text + "}}}")->hostTable();
    EXPECT_EQ(hosts->size(), 20000);
    EXPECT_EQ(hosts->host({hostMac("02:00:00:00:4e:1f"), Vxlan::Vni(10)}).moveCount(), 19999);
}

struct RefusedEvpn {
    char const * evpn;
    char const * error;
};

void expectEvpnRefused(std::initializer_list<RefusedEvpn> all) {
    for (auto const & refused : all) {
        auto const state = R"({"evpn":{"EVPN":)" + std::string(refused.evpn) + "}}";
        EXPECT_EQ(refusalBehind("received.evpn.EVPN", withReceived(state)), refused.error);
        EXPECT_EQ(refusalBehind("advertised.evpn.EVPN", withAdvertised(state)), refused.error);
    }
}

TEST(EvpnTables, RefusesBadTables) {
    expectEvpnRefused(
        {{"[]", R"(: found an array, expected an object of "hosts" and "flood")"},
         {R"({"host":{}})", R"(: found "host", expected "hosts" or "flood")"},
         {R"({"hosts":{},"hosts":{}})", R"(: found "hosts" again, expected it once)"},
         {R"({"hosts":7})", ".hosts: found 7, expected an object whose members are VNIs"},
         {R"({"hosts":{"10":{},"10":{}}})", R"(.hosts: found "10" again, expected it once)"},
         {R"({"hosts":{"x":{}}})",
          R"(.hosts: found "x", expected a VNI from 0 to 16777215 in decimal)"},
         {R"({"hosts":{"10":[]}})",
          R"(.hosts."10": found an array, expected an object whose members are Ethernet )"
          "addresses"},
         {R"({"hosts":{"10":{"02:00:00:00:00:01":{"vtep":"0.0.0.0"},)"
          R"("0200.0000.0001":{"vtep":"0.0.0.0"}}}})",
          R"(.hosts."10": found "0200.0000.0001" again, expected it once)"},
         {R"({"hosts":{"10":{"02:00:00:00:00:01":{"moves":1}}}})",
          R"(.hosts."10"."02:00:00:00:00:01": found an object, expected "vtep" in it)"},
         {R"({"flood":{"10":[],"10":[]}})", R"(.flood: found "10" again, expected it once)"},
         {R"({"flood":{"10":{}}})",
          R"(.flood."10": found an object, expected a list of IPv4 addresses)"},
         {R"({"flood":{"10":["10.0.0.1","10.0.0.1"]}})",
          R"(.flood."10"[1]: found "10.0.0.1" again, expected it once)"}});
}

} // namespace

} // namespace vxshow::test
