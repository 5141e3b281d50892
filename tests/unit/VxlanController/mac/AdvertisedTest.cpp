#include "Vex/Errors.h"
#include "tests/unit/VxlanController/AdvertisedFabric.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/Traced.h"

#include <gtest/gtest.h>

namespace Cli = VxlanController::Cli;

namespace {

char const * const anyMac = "02:00:00:00:00:01";

/// One entry in each part of the state: VNI 1 advertised, VNI 2 to HSC, VNI 3 to EVPN.
AdvertisedFabric fabricOfAllDestinations() {
    AdvertisedFabric fabric;
    addUnicast(fabric.entry("1"), anyMac, "10.0.0.1");
    addUnicast(fabric.hsc(2), anyMac, "10.0.0.1");
    fabric.evpn.host(3, anyMac, "10.0.0.1");
    return fabric;
}

/// The VNIs that a listing holds, each with the sizes of its three tables.
std::string collected(AdvertisedFabric const & fabric, MacFilter const & filter = {}) {
    auto const command = advertisedCommand(fabric, filter);
    command->initialize();
    std::string text;
    for (Cli::VniStatus const & status : command->vniDir()->vniEntry()) {
        text += status.vni().stringValue() + ":" + std::to_string(status.macVtepTable().size()) +
                std::to_string(status.macVtepMultiPathTable().size()) +
                std::to_string(status.macVtepFloodListTable().size()) + " ";
    }
    return text;
}

std::string rangeErrorOf(AdvertisedFabric const & fabric, MacFilter const & filter = {}) {
    OutputFile const file;
    try {
        advertisedCommand(fabric, filter)->render(static_cast<Vex::U32>(file.fd()), textFormat, 2);
        return "nothing was thrown";
    } catch (Vex::RangeError const & error) {
        EXPECT_EQ(file.content(), "");
        return error.what();
    }
}

constexpr char const * outOfRange = "Vni::value < Vni::min or > Vni::max not allowed";

} // namespace

TEST(Advertised, TheListIsNullUntilInitialized) {
    auto const command = advertisedCommand(AdvertisedFabric());
    EXPECT_EQ(command->vniDir(), nullptr);
    command->initialize();
    EXPECT_NE(command->vniDir(), nullptr);
}

TEST(Advertised, ADestinationThatIsNotAKeywordSelectsEverything) {
    auto const fabric = fabricOfAllDestinations();
    for (char const * word : {"", "all", "qvx", "leaf1", "HSC", "EVPN"}) {
        EXPECT_EQ(collected(fabric, {.source = word}), "1:100 ") << word;
    }
}

TEST(Advertised, AKeywordSelectsThatDestinationOnly) {
    auto const fabric = fabricOfAllDestinations();
    EXPECT_EQ(collected(fabric, {.source = "hsc"}), "2:100 ");
    EXPECT_EQ(collected(fabric, {.source = "evpn"}), "3:100 ");
}

TEST(Advertised, AbsentStateIsAnEmptyTableWithoutAMessage) {
    AdvertisedFabric fabric;
    fabric.vniStatusDir = nullptr;
    fabric.sources = nullptr;
    fabric.evpn.list = nullptr;
    for (char const * word : {"", "hsc", "evpn"}) {
        Traced const traced;
        EXPECT_EQ(collected(fabric, {.source = word}), "") << word;
        EXPECT_EQ(traced.text, "8 void VxlanController::Cli::VcsVniAdvertised::initialize()\n");
    }
}

TEST(Advertised, TheVniFilterSelectsThatVni) {
    auto fabric = fabricOfAllDestinations();
    addUnicast(fabric.entry("4098"), anyMac, "10.0.0.1");
    addUnicast(fabric.hsc(4098), anyMac, "10.0.0.1");
    fabric.evpn.host(4098, anyMac, "10.0.0.1");
    for (char const * word : {"", "hsc", "evpn"}) {
        EXPECT_EQ(collected(fabric, {.vni = Vxlan::Vni(4098), .source = word}), "4098:100 ");
        EXPECT_EQ(collected(fabric, {.vni = Vxlan::Vni(4097), .source = word}), "");
    }
}

TEST(Advertised, AVniFilterFindsItsEntryOnlyByTheDecimalName) {
    AdvertisedFabric fabric;
    addUnicast(fabric.entry("010"), anyMac, "10.0.0.1");
    EXPECT_EQ(collected(fabric), "10:100 ");
    EXPECT_EQ(collected(fabric, {.vni = Vxlan::Vni(10)}), "");
}

TEST(Advertised, AnEntryNameWithoutANumberIsVniZero) {
    AdvertisedFabric fabric;
    addUnicast(fabric.entry("abc"), anyMac, "10.0.0.1");
    EXPECT_EQ(collected(fabric), "0:100 ");
}

TEST(Advertised, TheLeadingNumberOfAnEntryNameCounts) {
    AdvertisedFabric fabric;
    for (char const * name : {" 7", "+8", "9x", "00000010"}) {
        addUnicast(fabric.entry(name), anyMac, "10.0.0.1");
    }
    EXPECT_EQ(collected(fabric), "7:100 8:100 9:100 10:100 ");
}

TEST(Advertised, AnEntryNameOutOfRangeRaisesARangeErrorAndPrintsNothing) {
    for (char const * name : {"16777216", "-1", "4294967297", "99999999999999999999"}) {
        auto fabric = fabricOfAllDestinations();
        fabric.entry(name);
        EXPECT_EQ(rangeErrorOf(fabric), outOfRange) << name;
        EXPECT_EQ(collected(fabric, {.vni = Vxlan::Vni(1)}), "1:100 ") << name;
    }
}

TEST(Advertised, AVniFilterOutOfRangeRaisesARangeError) {
    auto const fabric = fabricOfAllDestinations();
    MacFilter filter{.vni = Vxlan::VniOrNone(0x1000001)};
    EXPECT_EQ(rangeErrorOf(fabric, filter), outOfRange);
    filter.source = "hsc";
    EXPECT_EQ(rangeErrorOf(fabric, filter), outOfRange);
}

TEST(Advertised, AnEntryOfAnotherTypeIsSkipped) {
    auto fabric = fabricOfAllDestinations();
    fabric.vniStatusDir->entityIs("5", Vex::makePtr<VxlanController::VniStatusDirV2>());
    fabric.vniStatusDir->dirIs("6");
    EXPECT_EQ(collected(fabric), "1:100 ");
    EXPECT_EQ(collected(fabric, {.vni = Vxlan::Vni(5)}), "");
    EXPECT_EQ(collected(fabric, {.vni = Vxlan::Vni(6)}), "");
}

TEST(Advertised, AFloodListYieldsToItsMultipathEntryOnlyWhenAllMacsAreListed) {
    for (char const * word : {"", "hsc"}) {
        AdvertisedFabric fabric;
        for (auto * tables : {&fabric.entry("1"), &fabric.hsc(1)}) {
            addFlood(*tables, anyMac, {"10.0.0.1"});
            addMultipath(*tables, anyMac, {"10.0.0.2"});
            addFlood(*tables, "02:00:00:00:00:02", {"10.0.0.1"});
        }
        EXPECT_EQ(collected(fabric, {.source = word}), "1:011 ");
        EXPECT_EQ(collected(fabric, {.mac = anyMac, .source = word}), "1:011 ");
        EXPECT_EQ(collected(fabric, {.source = word, .vteps = {{"10.0.0.1", true}}}), "1:001 ");
    }
}

TEST(Advertised, ASingleMacShowsBothItsFloodListAndItsMultipathEntry) {
    AdvertisedFabric fabric;
    addFlood(fabric.entry("1"), anyMac, {"10.0.0.1"});
    addMultipath(fabric.entry("1"), anyMac, {"10.0.0.2"});
    EXPECT_EQ(collected(fabric, {.mac = anyMac}), "1:011 ");
    EXPECT_EQ(collected(fabric), "1:010 ");
}

TEST(Advertised, DefaultEntriesAreShownWhenAllMacsAreListed) {
    AdvertisedFabric fabric;
    addUnicast(fabric.entry("1"), "00:00:00:00:00:00", "0.0.0.0", 0);
    addMultipath(fabric.entry("1"), "00:00:00:00:00:00", {});
    addFlood(fabric.entry("1"), "00:00:00:00:00:00", {"10.0.0.1"});
    EXPECT_EQ(collected(fabric), "1:111 ");
}

TEST(Advertised, TwoEntriesOfOneVniAreMerged) {
    AdvertisedFabric fabric;
    addUnicast(fabric.entry("10"), anyMac, "10.0.0.1");
    addUnicast(fabric.entry("010"), "02:00:00:00:00:02", "10.0.0.1");
    EXPECT_EQ(collected(fabric), "10:200 ");
}

TEST(Advertised, EvpnFloodVtepsFormOneListAndAMacFilterExcludesThem) {
    AdvertisedFabric fabric;
    fabric.evpn.host(3, anyMac, "10.0.0.1");
    fabric.evpn.floodVtep(3, "10.0.0.1");
    fabric.evpn.floodVtep(3, "10.0.0.2");
    EXPECT_EQ(collected(fabric, {.source = "evpn"}), "3:101 ");
    EXPECT_EQ(collected(fabric, {.mac = anyMac, .source = "evpn"}), "3:100 ");
}

TEST(Advertised, RenderingAgainCollectsAgainAndDestructionFreesEverything) {
    auto const live = [] { return Vex::allocTrackLiveCount("VxlanController::Cli::"); };
    auto const fabric = fabricOfAllDestinations();
    Vex::U64 const before = live();
    {
        auto const command = advertisedCommand(fabric);
        std::string const first = rendered(command);
        auto const list = command->vniDir();
        EXPECT_EQ(rendered(command), first);
        EXPECT_NE(command->vniDir(), list);
        EXPECT_GT(live(), before);
    }
    EXPECT_EQ(live(), before);
}

TEST(Advertised, TracesItsFunctionsAndMissingState) {
    AdvertisedFabric fabric;
    Traced const traced;
    collected(fabric);
    collected(fabric, {.source = "hsc"});
    collected(fabric, {.source = "evpn"});
    fabric.evpn.list->hostFloodTableIs("EVPN", Cli::hostFloodTableFactory());
    collected(fabric, {.source = "evpn"});
    EXPECT_EQ(traced.text,
              "8 void VxlanController::Cli::VcsVniAdvertised::initialize()\n"
              "8 void VxlanController::Cli::VcsVniAdvertised::copyDest(Vex::Name) destName \n"
              "8 void VxlanController::Cli::VcsVniAdvertised::initialize()\n"
              "8 void VxlanController::Cli::VcsVniAdvertised::copyDest(Vex::Name) destName HSC\n"
              "8 void VxlanController::Cli::VcsVniAdvertised::initialize()\n"
              "8 void VxlanController::Cli::VcsVniAdvertised::copyTable(Vex::Name) tableName EVPN\n"
              "1 hostFloodTable not created for EVPN\n"
              "8 void VxlanController::Cli::VcsVniAdvertised::initialize()\n"
              "8 void VxlanController::Cli::VcsVniAdvertised::copyTable(Vex::Name) tableName EVPN\n"
              "1 No hostTable created for EVPN\n"
              "1 No floodTable created for EVPN\n");
}
