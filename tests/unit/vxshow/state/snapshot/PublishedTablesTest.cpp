#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace state;
using namespace state::snapshot;

namespace {

using VxlanController::ArpEntryV2;
using VxlanController::MacVtepV2;

Nolt::EthAddr tableMac(std::string_view text) {
    return Nolt::EthAddr::fromString(text);
}

Nolt::IpAddr tableIp(std::string_view text) {
    return Nolt::IpAddr::fromString(text);
}

Nolt::IpGenAddr anyIp(std::string_view text) {
    return Nolt::IpGenAddr::fromString(text);
}

TEST(PublishedTables, FillsTheUnicastTable) {
    auto const tables = mountedTables(R"({"unicast":{
        "02:00:00:00:00:01":{"vtep":"10.0.0.1","moves":4294967295},
        "0200.0000.0002":{"moves":0,"vtep":"10.0.0.2"},
        "02-00-00-00-00-0A":{"vtep":"255.255.255.255"}}})");
    EXPECT_EQ(tables->macVtepTable().size(), 3);
    EXPECT_EQ(tables->macVtepTable(tableMac("02:00:00:00:00:01")),
              MacVtepV2(tableMac("02:00:00:00:00:01"), tableIp("10.0.0.1"), 4294967295));
    EXPECT_EQ(tables->macVtepTable(tableMac("02:00:00:00:00:02")),
              MacVtepV2(tableMac("02:00:00:00:00:02"), tableIp("10.0.0.2"), 0));
    EXPECT_EQ(tables->macVtepTable(tableMac("02:00:00:00:00:0a")),
              MacVtepV2(tableMac("02:00:00:00:00:0a"), tableIp("255.255.255.255"), 0));
}

TEST(PublishedTables, FillsTheMultipathTable) {
    auto const tables = mountedTables(R"({"multipath":{
        "02:00:00:00:00:01":["10.0.0.2","10.0.0.1"],
        "02:00:00:00:00:02":[]}})");
    EXPECT_EQ(tables->macVtepMultiPathTable().size(), 2);
    VxlanController::MacVtepMultiPathV2 expected(tableMac("02:00:00:00:00:01"));
    expected.vtepIpIs(tableIp("10.0.0.1"), true);
    expected.vtepIpIs(tableIp("10.0.0.2"), true);
    EXPECT_EQ(tables->macVtepMultiPathTable(tableMac("02:00:00:00:00:01")), expected);
    EXPECT_TRUE(tables->macVtepMultiPathTable(tableMac("02:00:00:00:00:02")).vtepIp().empty());
}

TEST(PublishedTables, FillsTheFloodTable) {
    auto const tables = mountedTables(R"({"flood":{
        "00:00:00:00:00:00":["10.0.0.2","10.0.0.1"],
        "02:00:00:00:00:02":[]}})");
    EXPECT_EQ(tables->macVtepFloodListTable().size(), 2);
    auto const list = tables->macVtepFloodListTable(tableMac("00:00:00:00:00:00"));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->vtepIp().size(), 2);
    EXPECT_TRUE(list->vtepIp().has(tableIp("10.0.0.1")));
    EXPECT_TRUE(list->vtepIp().has(tableIp("10.0.0.2")));
    ASSERT_TRUE(tables->macVtepFloodListTable(tableMac("02:00:00:00:00:02")));
}

TEST(PublishedTables, FillsTheArpTable) {
    auto const tables = mountedTables(R"({"arp":{
        "192.0.2.1":{"mac":"02:00:00:00:00:01","preference":255,"changes":4294967295},
        "2001:db8::1":{"mac":"02:00:00:00:00:02"}}})");
    ASSERT_EQ(tables->arpTable().size(), 2);
    EXPECT_EQ(tables->arpTable().find(anyIp("192.0.2.1"))->element(),
              ArpEntryV2(anyIp("192.0.2.1"), tableMac("02:00:00:00:00:01"), 255, 4294967295));
    EXPECT_EQ(tables->arpTable().find(anyIp("2001:db8::1"))->element(),
              ArpEntryV2(anyIp("2001:db8::1"), tableMac("02:00:00:00:00:02"), 0, 0));
}

TEST(PublishedTables, LeavesMissingAndEmptyTablesEmpty) {
    for (auto const * text : {"{}", R"({"unicast":{},"multipath":{},"flood":{},"arp":{}})"}) {
        auto const tables = mountedTables(text);
        EXPECT_TRUE(tables->macVtepTable().empty());
        EXPECT_TRUE(tables->macVtepMultiPathTable().empty());
        EXPECT_TRUE(tables->macVtepFloodListTable().empty());
        EXPECT_TRUE(tables->arpTable().empty());
    }
}

TEST(PublishedTables, ReadsEscapedNamesAndTexts) {
    auto const tables = mountedTables(
        R"({"\u0075nicast":{"02:00:00:00:00:0\u0031":{"\u0076tep":"10.0.0\u002e1"}}})");
    EXPECT_EQ(tables->macVtepTable(tableMac("02:00:00:00:00:01")).vtepIp(), tableIp("10.0.0.1"));
}

TEST(PublishedTables, ReadsTheSmallestAndTheLargestVni) {
    auto const mount = mounted(withReceived(R"({"switches":{"leaf1":{
        "16777215":{},
        "0":{"arp":{"10.0.0.9":{"mac":"02:00:00:00:00:01"}}}}}})"));
    auto const dir = switchOf(mount, "leaf1");
    EXPECT_EQ(dir->vniStatusV2().size(), 2);
    ASSERT_TRUE(dir->vniStatusV2(Vxlan::Vni(0)));
    EXPECT_EQ(dir->vniStatusV2(Vxlan::Vni(0))->arpTable().size(), 1);
    EXPECT_TRUE(dir->vniStatusV2(Vxlan::Vni(16777215)));
}

TEST(PublishedTables, ReadsAHundredThousandEntries) {
    std::string text = R"({"unicast":{)";
    for (unsigned number = 0; number < 100000; ++number) {
        Nolt::EthAddr::Bytes const bytes{2,
                                         0,
                                         0,
                                         static_cast<Vex::U8>(number >> 16),
                                         static_cast<Vex::U8>(number >> 8),
                                         static_cast<Vex::U8>(number)};
        text.append(number == 0 ? "\"" : ",\n\"").append(Nolt::EthAddr(bytes).stringValue());
        text.append(R"(":{"vtep":"10.0.0.1","moves":)").append(std::to_string(number)).append("}");
    }
    auto const tables = mountedTables(text + "}}");
    EXPECT_EQ(tables->macVtepTable().size(), 100000);
    EXPECT_EQ(tables->macVtepTable(tableMac("02:00:00:01:86:9f")).moveCount(), 99999);
}

struct RefusedTables {
    char const * tables;
    char const * error;
};

void expectTablesRefused(std::initializer_list<RefusedTables> all) {
    for (auto const & refused : all) {
        EXPECT_EQ(tablesRefusal(refused.tables), refused.error) << refused.tables;
    }
}

TEST(PublishedTables, RefusesAnInvalidSetOfTables) {
    expectTablesRefused(
        {{"7", ": found 7, expected an object of tables"},
         {"null", ": found null, expected an object of tables"},
         {"[]", ": found an array, expected an object of tables"},
         {R"({"uncast":{}})",
          R"(: found "uncast", expected "unicast", "multipath", "flood" or "arp")"},
         {R"({"Unicast":{}})",
          R"(: found "Unicast", expected "unicast", "multipath", "flood" or "arp")"},
         {R"({"arp":{},"arp":{}})", R"(: found "arp" again, expected it once)"},
         {R"({"arp":{},"\u0061rp":{}})", R"(: found "\u0061rp" again, expected it once)"}});
}

TEST(PublishedTables, RefusesABadUnicastTable) {
    expectTablesRefused(
        {{R"({"unicast":[]})",
          ".unicast: found an array, expected an object whose members are Ethernet "
          "addresses"},
         {R"({"unicast":{"leaf":{}}})",
          R"(.unicast: found "leaf", expected an Ethernet address such as 00:1c:73:0a:0b:0c)"},
         {R"({"unicast":{"":{}}})",
          R"(.unicast: found "", expected an Ethernet address such as 00:1c:73:0a:0b:0c)"},
         {R"({"unicast":{"02:00:00:00:00:01 ":{}}})",
          R"(.unicast: found "02:00:00:00:00:01 ", expected an Ethernet address such as )"
          "00:1c:73:0a:0b:0c"},
         {R"({"unicast":{"00:1C:73:0A:0B:0C":{"vtep":"10.0.0.1"},)"
          R"("00-1c-73-0a-0b-0c":{"vtep":"10.0.0.1"}}})",
          R"(.unicast: found "00-1c-73-0a-0b-0c" again, expected it once)"},
         {R"({"unicast":{"02:00:00:00:00:01":"10.0.0.1"}})",
          R"(.unicast."02:00:00:00:00:01": found "10.0.0.1", expected an object of "vtep" )"
          R"(and "moves")"},
         {R"({"unicast":{"02:00:00:00:00:01":{}}})",
          R"(.unicast."02:00:00:00:00:01": found an object, expected "vtep" in it)"},
         {R"({"unicast":{"02:00:00:00:00:01":{"moves":1}}})",
          R"(.unicast."02:00:00:00:00:01": found an object, expected "vtep" in it)"},
         {R"({"unicast":{"02:00:00:00:00:01":{"vtep":"10.0.0.1","port":1}}})",
          R"(.unicast."02:00:00:00:00:01": found "port", expected "vtep" or "moves")"},
         {R"({"unicast":{"02:00:00:00:00:01":{"vtep":"10.0.0.1","vtep":"10.0.0.1"}}})",
          R"(.unicast."02:00:00:00:00:01": found "vtep" again, expected it once)"},
         {R"({"unicast":{"02:00:00:00:00:01":{"vtep":"2001:db8::1"}}})",
          R"(.unicast."02:00:00:00:00:01".vtep: found "2001:db8::1", expected an IPv4 )"
          "address such as 10.0.0.1"},
         {R"({"unicast":{"02:00:00:00:00:01":{"vtep":"10.0.0.01"}}})",
          R"(.unicast."02:00:00:00:00:01".vtep: found "10.0.0.01", expected an IPv4 )"
          "address such as 10.0.0.1"},
         {R"({"unicast":{"02:00:00:00:00:01":{"vtep":167772161}}})",
          R"(.unicast."02:00:00:00:00:01".vtep: found 167772161, expected an IPv4 )"
          "address such as 10.0.0.1"}});
}

TEST(PublishedTables, RefusesABadListOfVteps) {
    expectTablesRefused(
        {{R"({"multipath":{"02:00:00:00:00:01":"10.0.0.1"}})",
          R"(.multipath."02:00:00:00:00:01": found "10.0.0.1", expected a list of IPv4 )"
          "addresses"},
         {R"({"multipath":{"02:00:00:00:00:01":{}}})",
          R"(.multipath."02:00:00:00:00:01": found an object, expected a list of IPv4 )"
          "addresses"},
         {R"({"multipath":{"02:00:00:00:00:01":["10.0.0.1",["10.0.0.2"]]}})",
          R"(.multipath."02:00:00:00:00:01"[1]: found an array, expected an IPv4 address )"
          "such as 10.0.0.1"},
         {R"({"multipath":{"02:00:00:00:00:01":["10.0.0.1","10.0.0.2","10.0.0.1"]}})",
          R"(.multipath."02:00:00:00:00:01"[2]: found "10.0.0.1" again, expected it once)"},
         {R"({"multipath":{"02:00:00:00:00:01":[],"0200.0000.0001":[]}})",
          R"(.multipath: found "0200.0000.0001" again, expected it once)"},
         {R"({"flood":{"02:00:00:00:00:01":[null]}})",
          R"(.flood."02:00:00:00:00:01"[0]: found null, expected an IPv4 address such as )"
          "10.0.0.1"},
         {R"({"flood":{"02:00:00:00:00:01":["10.0.0.1","10.0.0.1"]}})",
          R"(.flood."02:00:00:00:00:01"[1]: found "10.0.0.1" again, expected it once)"},
         {R"({"flood":{"02:00:00:00:00:01":[],"02-00-00-00-00-01":[]}})",
          R"(.flood: found "02-00-00-00-00-01" again, expected it once)"}});
}

/// A unicast table with this many entries, followed by `rest`.
std::string longTable(int entries, std::string const & rest) {
    std::string table = R"({"unicast":{)";
    for (int entry = 0; entry < entries; ++entry) {
        auto const number = std::to_string(100'000 + entry);
        table += "\"0200.00" + number.substr(0, 2) + "." + number.substr(2) +
                 R"(":{"vtep":"10.0.0.1"},)";
    }
    return table + rest + "}}";
}

TEST(PublishedTables, ReportsARepeatedMacBeforeAnyLaterError) {
    std::string const again = R"("02-00-00-10-00-00":{"vtep":"10.0.0.1"})";
    for (int const entries : {1, 15, 16, 17, 64, 1000}) {
        for (auto const * behind : {"", R"(,"x":{})", R"(,"02:00:00:00:00:02":{"vtep":"x"})",
                                    R"(,"02:00:00:00:00:02":{"vtep":10)", R"(,,)",
                                    R"(,"02-00-00-10-00-00":{"vtep":"10.0.0.1"})"}) {
            auto const line = refusal(withTables(longTable(entries, again + behind)));
            EXPECT_NE(line.find(R"(.unicast: found "02-00-00-10-00-00" again, expected it once)"),
                      std::string::npos)
                << entries << " " << behind << " " << line;
            auto const column = line.substr(0, line.find(": "));
            EXPECT_EQ(column,
                      refusal(withTables(longTable(entries, again))).substr(0, column.size()));
        }
    }
}

TEST(PublishedTables, ReportsTheErrorInAnEntryThatRepeatsAMac) {
    auto const line = refusal(withTables(longTable(20, R"("02-00-00-10-00-00":{"vtep":"x"})")));
    EXPECT_NE(line.find(R"("02-00-00-10-00-00".vtep: found "x", expected an IPv4)"),
              std::string::npos)
        << line;
}

TEST(PublishedTables, RefusesABadArpTable) {
    expectTablesRefused(
        {{R"({"arp":{"":{"mac":"02:00:00:00:00:01"}}})",
          R"(.arp: found "", expected an IPv4 or IPv6 address such as 10.0.0.1 or )"
          "2001:db8::1"},
         {R"({"arp":{"fe80::1%eth0":{"mac":"02:00:00:00:00:01"}}})",
          R"(.arp: found "fe80::1%eth0", expected an IPv4 or IPv6 address such as 10.0.0.1 )"
          "or 2001:db8::1"},
         {R"({"arp":{"::1":{"mac":"02:00:00:00:00:01"},"0:0::1":{"mac":"02:00:00:00:00:01"}}})",
          R"(.arp: found "0:0::1" again, expected it once)"},
         {R"({"arp":{"10.0.0.1":{"preference":1}}})",
          R"(.arp."10.0.0.1": found an object, expected "mac" in it)"},
         {R"({"arp":{"10.0.0.1":{"mac":"x"}}})",
          R"(.arp."10.0.0.1".mac: found "x", expected an Ethernet address such as )"
          "00:1c:73:0a:0b:0c"},
         {R"({"arp":{"10.0.0.1":{"mac":"02:00:00:00:00:01","preference":256}}})",
          R"(.arp."10.0.0.1".preference: found 256, expected a whole number from 0 to 255)"},
         {R"({"arp":{"10.0.0.1":{"mac":"02:00:00:00:00:01","vni":1}}})",
          R"(.arp."10.0.0.1": found "vni", expected "mac", "preference" or "changes")"}});
}

TEST(PublishedTables, RefusesAnInvalidCount) {
    for (std::string const number : {"4294967296",
                                     "-1",
                                     "-0",
                                     "1.0",
                                     "1e3",
                                     "0.5",
                                     "01",
                                     "00",
                                     "+1",
                                     "0x10",
                                     "18446744073709551615",
                                     "18446744073709551616",
                                     "99999999999999999999999",
                                     "1_000",
                                     "1x",
                                     "\"1\"",
                                     "true",
                                     "null",
                                     "nul",
                                     "NaN",
                                     "\\u0031"}) {
        EXPECT_EQ(tablesRefusal(R"({"unicast":{"02:00:00:00:00:01":{"moves":)" + number +
                                R"(,"vtep":"10.0.0.1"}}})"),
                  R"(.unicast."02:00:00:00:00:01".moves: found )" + number +
                      ", expected a whole number from 0 to 4294967295");
    }
}

TEST(PublishedTables, RefusesACountThatIsNotExactlyOneNumber) {
    EXPECT_EQ(tablesRefusal(R"({"unicast":{"02:00:00:00:00:01":{"moves":1 2}}})"),
              R"(.unicast."02:00:00:00:00:01": found 2, expected ',' or '}')");
    EXPECT_EQ(tablesRefusal(R"({"unicast":{"02:00:00:00:00:01":{"moves":{}}}})"),
              R"(.unicast."02:00:00:00:00:01".moves: found an object, expected a whole number )"
              "from 0 to 4294967295");
}

TEST(PublishedTables, RefusesNamesThatAreNotVnis) {
    for (std::string const name : {"16777216", "010", "-1", "+1", "0.0.10", " 10", "ten", "", "1e1",
                                   "4294967306", "18446744073709551626"}) {
        EXPECT_EQ(refusal(withReceived(R"({"switches":{"leaf1":{")" + name + R"(":{}}}})")),
                  "1:81: received.switches.leaf1: found \"" + name +
                      "\", expected a VNI from 0 to 16777215 in decimal");
    }
}

TEST(PublishedTables, RefusesARepeatedVni) {
    EXPECT_EQ(refusal(withReceived(R"({"switches":{"leaf1":{"10":{},"11":{},"1\u0030":{}}}})")),
              R"(1:97: received.switches.leaf1: found "1\u0030" again, expected it once)");
}

} // namespace

} // namespace vxshow::test
