#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace state;
using namespace state::snapshot;

namespace {

TEST(Document, MountsNothingForMissingState) {
    for (auto const * state :
         {"", R"(,"received":{})", R"(,"advertised":{},"received":{})", R"(,"routers":{})"}) {
        auto const mount =
            mounted(std::string(R"({"format":"vxlan-controller-state","version":1)") + state + "}");
        EXPECT_FALSE(mount.received.switches);
        EXPECT_FALSE(mount.received.sources);
        EXPECT_FALSE(mount.received.evpn);
        EXPECT_FALSE(mount.advertised.vnis);
        EXPECT_FALSE(mount.advertised.sources);
        EXPECT_FALSE(mount.advertised.evpn);
        EXPECT_FALSE(mount.routers.switchInfoDir);
        EXPECT_FALSE(mount.routers.publishStatus);
        EXPECT_FALSE(mount.routers.lRStatusDir);
    }
}

TEST(Document, DistinguishesAnEmptySourceFromAnAbsentOne) {
    auto const mount = mounted(withReceived(R"({"switches":{},"sources":{"HSC":{}},"evpn":{}})"));
    ASSERT_TRUE(mount.received.switches);
    EXPECT_EQ(mount.received.switches->size(), 0);
    ASSERT_TRUE(mount.received.sources);
    ASSERT_TRUE(mount.received.sources->vniStatusDir("HSC"));
    EXPECT_EQ(mount.received.sources->vniStatusDir("HSC")->vniStatusV2().size(), 0);
    EXPECT_FALSE(mount.received.sources->vniStatusDir("QVX"));
    ASSERT_TRUE(mount.received.evpn);
    EXPECT_FALSE(mount.received.evpn->hostFloodTable("EVPN"));
}

TEST(Document, DistinguishesAnEmptyDestinationFromAnAbsentOne) {
    auto const mount = mounted(withAdvertised(R"({"vnis":{},"sources":{"HSC":{}},"evpn":{}})"));
    ASSERT_TRUE(mount.advertised.vnis);
    EXPECT_EQ(mount.advertised.vnis->size(), 0);
    ASSERT_TRUE(mount.advertised.sources);
    ASSERT_TRUE(mount.advertised.sources->vniStatusDir("HSC"));
    EXPECT_EQ(mount.advertised.sources->vniStatusDir("HSC")->vniStatusV2().size(), 0);
    ASSERT_TRUE(mount.advertised.evpn);
    EXPECT_FALSE(mount.advertised.evpn->hostFloodTable("EVPN"));
}

TEST(Document, KeepsReceivedAndAdvertisedStateApart) {
    auto const mount = mounted(
        R"({"format":"vxlan-controller-state","version":1,
            "advertised":{"vnis":{"10":{"arp":{"10.0.0.9":{"mac":"02:00:00:00:00:01"}}}},
                          "sources":{"HSC":{"11":{}}},
                          "evpn":{"EVPN":{"hosts":{}}}},
            "received":{"switches":{"leaf1":{}},
                        "sources":{"HSC":{"12":{}}},
                        "evpn":{"EVPN":{"flood":{}}}}})");
    EXPECT_EQ(mount.advertised.vnis->size(), 1);
    ASSERT_TRUE(entryOf(mount, "10"));
    EXPECT_EQ(entryOf(mount, "10")->arpTable().size(), 1);
    EXPECT_TRUE(mount.advertised.sources->vniStatusDir("HSC")->vniStatusV2(Vxlan::Vni(11)));
    EXPECT_FALSE(mount.advertised.sources->vniStatusDir("HSC")->vniStatusV2(Vxlan::Vni(12)));
    EXPECT_TRUE(mount.advertised.evpn->hostFloodTable("EVPN")->hostTable());
    EXPECT_FALSE(mount.advertised.evpn->hostFloodTable("EVPN")->floodTable());
    EXPECT_EQ(mount.received.switches->size(), 1);
    EXPECT_TRUE(mount.received.sources->vniStatusDir("HSC")->vniStatusV2(Vxlan::Vni(12)));
    EXPECT_FALSE(mount.received.evpn->hostFloodTable("EVPN")->hostTable());
    EXPECT_TRUE(mount.received.evpn->hostFloodTable("EVPN")->floodTable());
}

TEST(Document, FillsTheTablesOfAnEntry) {
    auto const entry = entryOf(mounted(withAdvertised(R"({"vnis":{"10":{
        "unicast":{"02:00:00:00:00:01":{"vtep":"10.0.0.1","moves":3}},
        "multipath":{"02:00:00:00:00:02":["10.0.0.1","10.0.0.2"]},
        "flood":{"02:00:00:00:00:03":["10.0.0.1"]},
        "arp":{"2001:db8::1":{"mac":"02:00:00:00:00:01","preference":7,"changes":9}}}}})")),
                               "10");
    ASSERT_TRUE(entry);
    auto const mac = [](char const * text) { return Nolt::EthAddr::fromString(text); };
    EXPECT_EQ(entry->macVtepTable(mac("02:00:00:00:00:01")).moveCount(), 3);
    EXPECT_EQ(entry->macVtepMultiPathTable(mac("02:00:00:00:00:02")).vtepIp().size(), 2);
    ASSERT_TRUE(entry->macVtepFloodListTable(mac("02:00:00:00:00:03")));
    auto const * const binding = entry->arpTable().find(Nolt::IpGenAddr::fromString("2001:db8::1"));
    ASSERT_TRUE(binding);
    EXPECT_EQ(binding->element().preference(), 7);
    EXPECT_EQ(binding->element().changes(), 9);
}

TEST(Document, AcceptsFormatAndVersionAnywhere) {
    auto const mount = mounted(
        R"( {"received":{"sources":{"QVX":{"7":{}},"HSC":{}}},"version":1 ,
             "format":"vxlan\u002dcontroller-state"} )");
    EXPECT_TRUE(mount.received.sources->vniStatusDir("QVX")->vniStatusV2(Vxlan::Vni(7)));
}

TEST(Document, KeepsSwitchNamesUnchanged) {
    auto const mount = mounted(withReceived(
        R"({"switches":{"leaf1":{},"Leaf1":{},"":{},"he said \"leaf\"":{},"\ud83c\udf3f":{},)"
        R"("a\u0000b":{},"HSC":{},"100%":{}}})"));
    EXPECT_EQ(mount.received.switches->size(), 8);
    using namespace std::string_view_literals;
    for (auto const name : {"leaf1"sv, "Leaf1"sv, ""sv, "he said \"leaf\""sv, "\U0001f33f"sv,
                            "a\0b"sv, "HSC"sv, "100%"sv}) {
        EXPECT_TRUE(switchOf(mount, name)) << name;
    }
}

TEST(Document, KeepsEntryNamesEvenIfTheyAreNotVnis) {
    auto const mount = mounted(withAdvertised(
        R"({"vnis":{"10":{},"010":{}," 10":{},"+10":{},"-1":{},"16777216":{},"abc":{},"":{},)"
        R"("\ud83c\udf3f":{},"1\u00000":{},"99999999999999999999":{}}})"));
    EXPECT_EQ(mount.advertised.vnis->size(), 11);
    using namespace std::string_view_literals;
    for (auto const name : {"10"sv, "010"sv, " 10"sv, "+10"sv, "-1"sv, "16777216"sv, "abc"sv, ""sv,
                            "\U0001f33f"sv, "1\0000"sv, "99999999999999999999"sv}) {
        EXPECT_TRUE(entryOf(mount, name)) << name;
    }
}

struct Refused {
    std::string document;
    std::string error;
};

void expectRefused(std::initializer_list<Refused> all) {
    for (auto const & refused : all) {
        EXPECT_EQ(refusal(refused.document), refused.error) << refused.document;
    }
}

std::string const format = R"("format":"vxlan-controller-state")";
std::string const version = R"("version":1)";

TEST(Document, RefusesABadHeader) {
    expectRefused(
        {{"{}", R"(1:1: found an object, expected "format" in it)"},
         {" \n {" + version + "}", R"(2:2: found an object, expected "format" in it)"},
         {"{" + format + "}", R"(1:1: found an object, expected "version" in it)"},
         {"{" + format + "," + format + "}", R"(1:36: found "format" again, expected it once)"},
         {"{" + version + "," + version + "}", R"(1:14: found "version" again, expected it once)"},
         {R"({"format":"vxlan-controller-State"})",
          R"(1:11: format: found "vxlan-controller-State", expected "vxlan-controller-state")"},
         {R"({"format":1})", R"(1:11: format: found 1, expected "vxlan-controller-state")"},
         {R"({"version":2})", "1:12: version: found 2, expected 1"},
         {R"({"version":0})", "1:12: version: found 0, expected 1"},
         {R"({"version":1.0})", "1:12: version: found 1.0, expected 1"},
         {R"({"version":"1"})", R"(1:12: version: found "1", expected 1)"},
         {R"({"version":4294967297})", "1:12: version: found 4294967297, expected 1"},
         {R"({"router":{}})",
          R"(1:2: found "router", expected "format", "version", "received", "advertised", )"
          R"("routers", "origin", "details" or "uncounted")"},
         {R"({"advertised":{},"advertised":{}})",
          R"(1:18: found "advertised" again, expected it once)"},
         {R"({"received":{},"received":{}})", R"(1:16: found "received" again, expected it once)"},
         {R"({"routers":{},"routers":{}})", R"(1:15: found "routers" again, expected it once)"}});
}

TEST(Document, RefusesBadReceivedState) {
    expectRefused(
        {{R"({"received":null})",
          "1:13: received: found null, expected an object of published state"},
         {R"({"received":{"switch":{}}})",
          R"(1:14: received: found "switch", expected "switches", "sources" or "evpn")"},
         {R"({"received":{"evpn":{},"evpn":{}}})",
          R"(1:24: received: found "evpn" again, expected it once)"},
         {R"({"received":{"switches":[]}})",
          "1:25: received.switches: found an array, expected an object whose members are "
          "switches"},
         {R"({"received":{"switches":{"leaf1":[]}}})",
          "1:34: received.switches.leaf1: found an array, expected an object whose members "
          "are VNIs"},
         {R"({"received":{"switches":{"leaf1":{},)"
          "\n"
          R"("leaf\u0031":{}}}})",
          R"(2:1: received.switches: found "leaf\u0031" again, expected it once)"},
         {R"({"received":{"sources":{"EVPN":{}}}})",
          R"(1:25: received.sources: found "EVPN", expected "HSC" or "QVX")"},
         {R"({"received":{"sources":{"hsc":{}}}})",
          R"(1:25: received.sources: found "hsc", expected "HSC" or "QVX")"},
         {R"({"received":{"sources":{"HSC":{},"HSC":{}}}})",
          R"(1:34: received.sources: found "HSC" again, expected it once)"},
         {R"({"received":{"sources":{"QVX":{"1":{"arp":1}}}}})",
          R"(1:43: received.sources.QVX."1".arp: found 1, expected an object whose members )"
          "are IP addresses"},
         {R"({"received":{"evpn":{"HSC":{}}}})",
          R"(1:22: received.evpn: found "HSC", expected "EVPN")"},
         {R"({"received":{"evpn":{"EVPN":{},"EVPN":{}}}})",
          R"(1:32: received.evpn: found "EVPN" again, expected it once)"}});
}

TEST(Document, RefusesBadAdvertisedState) {
    expectRefused(
        {{R"({"advertised":[]})",
          "1:15: advertised: found an array, expected an object of published state"},
         {R"({"advertised":{"switches":{}}})",
          R"(1:16: advertised: found "switches", expected "vnis", "sources" or "evpn")"},
         {R"({"advertised":{"vnis":{},"vnis":{}}})",
          R"(1:26: advertised: found "vnis" again, expected it once)"},
         {R"({"advertised":{"vnis":null}})",
          "1:23: advertised.vnis: found null, expected an object whose members are per-VNI "
          "entries"},
         {R"({"advertised":{"vnis":{"10":7}}})",
          R"(1:29: advertised.vnis."10": found 7, expected an object of tables)"},
         {R"({"advertised":{"vnis":{"10":{},"1\u0030":{}}}})",
          R"(1:32: advertised.vnis: found "1\u0030" again, expected it once)"},
         {R"({"advertised":{"vnis":{"abc":{},"":{},"abc":{}}}})",
          R"(1:39: advertised.vnis: found "abc" again, expected it once)"},
         {R"({"advertised":{"vnis":{"a\ud800":{}}}})",
          R"(1:26: advertised.vnis: found "\ud800", expected an escape that stands for a )"
          "character"},
         {R"({"advertised":{"sources":{"QVX":{}}}})",
          R"(1:27: advertised.sources: found "QVX", expected "HSC")"},
         {R"({"advertised":{"sources":{"HSC":{},"HSC":{}}}})",
          R"(1:36: advertised.sources: found "HSC" again, expected it once)"},
         {R"({"advertised":{"sources":{"HSC":{"abc":{}}}}})",
          R"(1:34: advertised.sources.HSC: found "abc", expected a VNI from 0 to 16777215 in )"
          "decimal"},
         {R"({"advertised":{"evpn":{"HSC":{}}}})",
          R"(1:24: advertised.evpn: found "HSC", expected "EVPN")"},
         {R"({"advertised":{"evpn":{"EVPN":{},"EVPN":{}}}})",
          R"(1:34: advertised.evpn: found "EVPN" again, expected it once)"}});
}

} // namespace

} // namespace vxshow::test
