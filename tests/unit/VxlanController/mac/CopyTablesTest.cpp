#include "tests/unit/VxlanController/Fabric.h"

#include <gtest/gtest.h>

namespace Cli = VxlanController::Cli;

namespace {

/// What a listing has collected for one VNI of one source, in short:
/// unicast "MAC>VTEP*MOVES", multipath "MAC=VTEPS", flood "MAC~VTEPS", last octets only.
std::string collected(Fabric const & fabric, MacFilter const & filter = {},
                      char const * source = "leaf1", Vex::U32 vni = 10) {
    auto const last = [](std::string const & text) { return text.substr(text.size() - 2); };
    auto const vteps = [&](auto const & list) {
        std::string text;
        for (Nolt::IpAddr ip : list) {
            text += "." + std::to_string(ip.value() & 0xff);
        }
        return text;
    };
    auto const command = receivedCommand(fabric, filter);
    command->initialize();
    auto const dir = command->switchDir()->switchList(source);
    if (!dir || !dir->vniStatusList()->vniEntry(Vxlan::Vni(vni))) {
        return "nothing";
    }
    auto const status = dir->vniStatusList()->vniEntry(Vxlan::Vni(vni));
    std::string text;
    for (auto const & entry : status->macVtepTable()) {
        text += last(entry.macAddr().stringValue()) + ">" +
                std::to_string(entry.vtepIp().value() & 0xff) + "*" +
                entry.moveCount().stringValue() + " ";
    }
    for (auto const & entry : status->macVtepMultiPathTable()) {
        text += last(entry.macAddr().stringValue()) + "=" + vteps(entry.vtepIpList()) + " ";
    }
    for (auto const & entry : status->macVtepFloodListTable()) {
        text += last(entry.macAddr().stringValue()) + "~" + vteps(entry.vtepIpFloodList()) + " ";
    }
    return text;
}

/// MAC 01 in all three tables, 02 unicast, 03 multipath, 04 flood.
Fabric fabricOfAllTables() {
    Fabric fabric;
    fabric.unicast("leaf1", 10, "02:00:00:00:00:01", "10.0.0.1", 7)
        .unicast("leaf1", 10, "02:00:00:00:00:02", "10.0.0.2")
        .multipath("leaf1", 10, "02:00:00:00:00:01", {"10.0.0.1", "10.0.0.2"})
        .multipath("leaf1", 10, "02:00:00:00:00:03", {"10.0.0.3", "10.0.0.4"})
        .flood("leaf1", 10, "02:00:00:00:00:01", {"10.0.0.1", "10.0.0.5"})
        .flood("leaf1", 10, "02:00:00:00:00:04", {"10.0.0.6"});
    return fabric;
}

} // namespace

TEST(CopyTables, EveryTableIsCopiedAndSorted) {
    EXPECT_EQ(collected(fabricOfAllTables()), "01>1*7 02>2*0 01=.1.2 03=.3.4 01~.1.5 04~.6 ");
}

TEST(CopyTables, AMacFilterSelectsThatMacFromEveryTable) {
    EXPECT_EQ(collected(fabricOfAllTables(), {.mac = "02:00:00:00:00:01"}),
              "01>1*7 01=.1.2 01~.1.5 ");
    EXPECT_EQ(collected(fabricOfAllTables(), {.mac = "02:00:00:00:00:02"}), "02>2*0 ");
    EXPECT_EQ(collected(fabricOfAllTables(), {.mac = "02:00:00:00:00:09"}), "nothing");
}

TEST(CopyTables, AMacKnownOnlyAsAFloodListYieldsOnlyThatFloodList) {
    Fabric fabric = fabricOfAllTables();
    fabric.floodVtep(10, "10.8.0.1");
    MacFilter const filter{.mac = "02:00:00:00:00:04"};
    EXPECT_EQ(collected(fabric, filter), "04~.6 ");
    auto const command = receivedCommand(fabric, filter);
    command->initialize();
    EXPECT_TRUE(command->nonSwitchSourceDir()->switchList().empty());
}

TEST(CopyTables, AVtepFilterSelectsEntriesWithOneOfItsVteps) {
    EXPECT_EQ(collected(fabricOfAllTables(), {.vteps = {{"10.0.0.2", true}, {"10.0.0.6", true}}}),
              "02>2*0 01=.1.2 04~.6 ");
}

TEST(CopyTables, AKeptMultipathEntryIsCopiedWithAllItsVteps) {
    Fabric fabric;
    fabric.multipath("leaf1", 10, "02:00:00:00:00:0a", {"10.0.0.1", "10.0.0.2"});
    EXPECT_EQ(collected(fabric, {.vteps = {{"10.0.0.1", true}}}), "0a=.1.2 ");
}

TEST(CopyTables, AVtepListWhoseEntriesAreAllFalseFiltersOutEverything) {
    EXPECT_EQ(collected(fabricOfAllTables(), {.vteps = {{"10.0.0.1", false}, {"10.0.0.3", false}}}),
              "nothing");
}

TEST(CopyTables, FiltersCombine) {
    EXPECT_EQ(
        collected(fabricOfAllTables(), {.mac = "02:00:00:00:00:01", .vteps = {{"10.0.0.5", true}}}),
        "01~.1.5 ");
    EXPECT_EQ(collected(fabricOfAllTables(), {.vni = Vxlan::Vni(11), .mac = "02:00:00:00:00:01"}),
              "nothing");
}

TEST(CopyTables, DefaultEntriesCountAsAbsent) {
    Fabric fabric;
    fabric.unicast("leaf1", 10, "00:00:00:00:00:00", "0.0.0.0", 0)
        .multipath("leaf1", 10, "00:00:00:00:00:00", {});
    EXPECT_EQ(collected(fabric), "nothing");
    fabric.unicast("leaf1", 10, "00:00:00:00:00:00", "0.0.0.0", 1)
        .multipath("leaf1", 10, "00:00:00:00:00:00", {"10.0.0.1"});
    EXPECT_EQ(collected(fabric), "00>0*1 00=.1 ");
}

TEST(CopyTables, EveryCopiedVtepIsAMemberWhateverItsFlag) {
    Fabric fabric;
    VxlanController::MacVtepMultiPathV2 entry(Nolt::EthAddr::fromString("02:00:00:00:00:01"));
    entry.vtepIpIs(Nolt::IpAddr(1), false);
    fabric.dirOf("leaf1").vniStatusV2Is(Vxlan::Vni(10))->macVtepMultiPathIs(entry);
    auto const command = receivedCommand(fabric);
    command->initialize();
    auto const status =
        command->switchDir()->switchList("leaf1")->vniStatusList()->vniEntry(Vxlan::Vni(10));
    EXPECT_TRUE(status->macVtepMultiPathTable(entry.macAddr()).vtepIpList(Nolt::IpAddr(1)));
}

TEST(CopyTables, AMillionEntriesOfOneVniAreSorted) {
    constexpr Vex::U32 count = 1'000'000;
    Fabric fabric;
    auto const status = fabric.dirOf("leaf1").vniStatusV2Is(Vxlan::Vni(10));
    for (Vex::U32 i = 0; i < count; ++i) {
        Vex::U32 const scattered = i * 2654435761U; // odd, so every 32-bit number once
        Nolt::EthAddr const mac(
            {2, 0, static_cast<Vex::U8>(scattered >> 24), static_cast<Vex::U8>(scattered >> 16),
             static_cast<Vex::U8>(scattered >> 8), static_cast<Vex::U8>(scattered)});
        status->macVtepIs(VxlanController::MacVtepV2(mac, Nolt::IpAddr(i + 1), 0));
    }
    auto const command = receivedCommand(fabric);
    command->initialize();
    auto const copied =
        command->switchDir()->switchList("leaf1")->vniStatusList()->vniEntry(Vxlan::Vni(10));
    EXPECT_EQ(copied->macVtepTable().size(), count);
    Nolt::EthAddr previous;
    for (Cli::MacVtep const & entry : copied->macVtepTable()) {
        ASSERT_LT(previous, entry.macAddr());
        previous = entry.macAddr();
    }
}
