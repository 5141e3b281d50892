#include "vxshow/state/Selection.h"

#include "tests/unit/vxshow/state/snapshot/Snapshots.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace state;

namespace {

constexpr std::string_view twoSwitches = R"({"switches":{
    "leaf1":{"10":{"unicast":{"02:00:00:00:00:01":{"vtep":"10.0.0.1"}},
                   "multipath":{"02:00:00:00:00:02":["10.0.0.1"]},
                   "flood":{"02:00:00:00:00:03":["10.0.0.1"]},
                   "arp":{"10.0.0.1":{"mac":"02:00:00:00:00:01"}}},
             "20":{"unicast":{"02:00:00:00:00:04":{"vtep":"10.0.0.1"}}}},
    "leaf2":{"10":{"unicast":{"02:00:00:00:00:05":{"vtep":"10.0.0.1"}}}}}})";

Mount received(Selection const & selection) {
    TextFile const file(withReceived(twoSwitches));
    return state::snapshot::readSnapshot(file.path(), selection);
}

/// How many entries each table of a VNI of a switch has: unicast, multipath, flood, ARP; empty if
/// the VNI is not mounted.
std::string entriesOf(Mount const & mount, std::string_view name, Vex::U32 vni) {
    auto const tables = switchOf(mount, name)->vniStatusV2(Vxlan::Vni(vni));
    if (!tables) {
        return "";
    }
    return std::to_string(tables->macVtepTable().size()) + " " +
           std::to_string(tables->macVtepMultiPathTable().size()) + " " +
           std::to_string(tables->macVtepFloodListTable().size()) + " " +
           std::to_string(tables->arpTable().size());
}

std::string refusedWith(Selection const & selection, std::string const & text) {
    TextFile const file(text);
    try {
        state::snapshot::readSnapshot(file.path(), selection);
    } catch (state::snapshot::SnapshotError const & error) {
        return error.what();
    }
    return "accepted";
}

} // namespace

TEST(Selection, IsEverythingByDefault) {
    auto const mount = received({});
    EXPECT_EQ(entriesOf(mount, "leaf1", 10), "1 1 1 1");
    EXPECT_EQ(entriesOf(mount, "leaf1", 20), "1 0 0 0");
    EXPECT_EQ(entriesOf(mount, "leaf2", 10), "1 0 0 0");
}

TEST(Selection, OfAVniMountsThatVni) {
    auto const mount = received({.vni = Vxlan::Vni(20)});
    EXPECT_EQ(entriesOf(mount, "leaf1", 10), "");
    EXPECT_EQ(entriesOf(mount, "leaf1", 20), "1 0 0 0");
    EXPECT_EQ(entriesOf(mount, "leaf2", 10), "");
}

TEST(Selection, OfASwitchMountsThatSwitchAndTheNamesOfTheOthers) {
    auto const mount = received({.source = "leaf2"});
    EXPECT_EQ(entriesOf(mount, "leaf1", 10), "");
    EXPECT_EQ(entriesOf(mount, "leaf2", 10), "1 0 0 0");
    EXPECT_EQ(entriesOf(received({.source = "all"}), "leaf1", 10), "1 1 1 1");
}

TEST(Selection, OfOneKindOfTableMountsThatKind) {
    EXPECT_EQ(entriesOf(received({.arpTables = false}), "leaf1", 10), "1 1 1 0");
    EXPECT_EQ(entriesOf(received({.macTables = false}), "leaf1", 10), "0 0 0 1");
}

TEST(Selection, WithoutReceivedStateMountsNoReceivedTables) {
    EXPECT_EQ(entriesOf(received({.received = false}), "leaf1", 10), "");
}

TEST(Selection, TakesEveryEntryThatACommandMightReadAsTheVni) {
    Selection const ten{.vni = Vxlan::Vni(10)};
    for (char const * name : {"10", "010", " 10", "10 ", "abc", "", "16777216"}) {
        EXPECT_TRUE(ten.takesEntry(name)) << name;
    }
    EXPECT_FALSE(ten.takesEntry("11"));
    EXPECT_FALSE(ten.takesEntry("0"));
    EXPECT_TRUE(Selection().takesEntry("11"));
}

TEST(Selection, OfAVniMountsItsAdvertisedEntryAndTheNamesOfTheOthers) {
    TextFile const file(withAdvertised(
        R"({"vnis":{"10":{"unicast":{"02:00:00:00:00:01":{"vtep":"10.0.0.1"}}},
                    "20":{"unicast":{"02:00:00:00:00:02":{"vtep":"10.0.0.1"}}}}})"));
    auto const mount = state::snapshot::readSnapshot(file.path(), {.vni = Vxlan::Vni(20)});
    EXPECT_EQ(entryOf(mount, "10")->macVtepTable().size(), 0U);
    EXPECT_EQ(entryOf(mount, "20")->macVtepTable().size(), 1U);
}

TEST(Selection, ChecksWhatIsNotSelectedLikeTheRest) {
    Selection const nothing{.received = false,
                            .advertised = false,
                            .macTables = false,
                            .arpTables = false,
                            .vni = Vxlan::Vni(1),
                            .source = "nobody"};
    for (char const * tables :
         {R"({"unicast":{"02:00:00:00:00:01":{"vtep":"10.0.0.1"},
                         "0200.0000.0001":{"vtep":"10.0.0.1"}}})",
          R"({"unicast":{"02:00:00:00:00:0g":{"vtep":"10.0.0.1"}}})",
          R"({"multipath":{"02:00:00:00:00:01":["10.0.0.1","10.0.0.1"]}})",
          R"({"flood":{"02:00:00:00:00:01":["10.0.0.256"]}})",
          R"({"arp":{"10.0.0.1":{"mac":"02:00:00:00:00:01","preference":256}}})",
          R"({"other":{}})"}) {
        for (std::string const & text :
             {withTables(tables),
              withAdvertised(std::string(R"({"vnis":{"10":)") + tables + "}}")}) {
            auto const refused = refusedWith({}, text);
            EXPECT_NE(refused, "accepted");
            auto const behindName = refused.find(':');
            auto const otherwise = refusedWith(nothing, text);
            EXPECT_EQ(otherwise.substr(otherwise.find(':')), refused.substr(behindName));
        }
    }
    EXPECT_NE(refusedWith(nothing, withReceived(R"({"switches":{"leaf1":{"10":{},"10":{}}}})")),
              "accepted");
}

} // namespace vxshow::test
