#include "Vex/Errors.h"
#include "tests/unit/VxlanController/Fabric.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/Traced.h"

#include <gtest/gtest.h>

namespace Cli = VxlanController::Cli;

namespace {

/// One entry under every source, so that a listing shows which sources it selects.
Fabric fabricOfAllSources() {
    Fabric fabric;
    for (char const * source : {"leaf1", "leaf2", "HSC", "QVX"}) {
        fabric.unicast(source, 10, "02:00:00:00:00:01", "10.0.0.1");
    }
    fabric.host(10, "02:00:00:00:00:01", "10.0.0.1");
    return fabric;
}

std::string namesIn(Vex::Ptr<Cli::SwitchDir const> const & directory) {
    std::string names;
    for (Cli::Switch const & source : directory->switchList()) {
        names += source.switchId().stringValue() + " ";
    }
    return names;
}

/// The sources of a listing: switches, a bar, other sources.
std::string sourcesOf(Fabric const & fabric, MacFilter const & filter) {
    auto const command = receivedCommand(fabric, filter);
    command->initialize();
    return namesIn(command->switchDir()) + "| " + namesIn(command->nonSwitchSourceDir());
}

std::string sourcesUnder(std::string const & word) {
    return sourcesOf(fabricOfAllSources(), {.source = word});
}

} // namespace

TEST(Received, TheDirectoriesAreNullUntilInitialized) {
    auto const command = receivedCommand(Fabric());
    EXPECT_EQ(command->switchDir(), nullptr);
    EXPECT_EQ(command->nonSwitchSourceDir(), nullptr);
    command->initialize();
    EXPECT_NE(command->switchDir(), nullptr);
    EXPECT_NE(command->nonSwitchSourceDir(), nullptr);
}

TEST(Received, AnEmptySourceFilterSelectsEverything) {
    EXPECT_EQ(sourcesUnder(""), "leaf1 leaf2 | EVPN HSC QVX ");
}

TEST(Received, AllSelectsEverySwitchAndNoOtherSource) {
    EXPECT_EQ(sourcesUnder("all"), "leaf1 leaf2 | ");
}

TEST(Received, AKeywordSelectsThatSourceOnly) {
    EXPECT_EQ(sourcesUnder("hsc"), "| HSC ");
    EXPECT_EQ(sourcesUnder("qvx"), "| QVX ");
    EXPECT_EQ(sourcesUnder("evpn"), "| EVPN ");
}

TEST(Received, ASwitchNameSelectsThatSwitchOnly) {
    EXPECT_EQ(sourcesUnder("leaf2"), "leaf2 | ");
}

TEST(Received, AnUnknownSwitchYieldsNothing) {
    EXPECT_EQ(sourcesUnder("leaf9"), "| ");
    EXPECT_EQ(sourcesUnder("LEAF1"), "| ");
}

TEST(Received, UpperCaseKeywordsAreSwitchNames) {
    EXPECT_EQ(sourcesUnder("HSC"), "| ");
    EXPECT_EQ(sourcesUnder("EVPN"), "| ");
    EXPECT_EQ(sourcesUnder("All"), "| ");
}

TEST(Received, ASwitchNamedHscShowsTheHscSource) {
    Fabric fabric = fabricOfAllSources();
    fabric.switches->entityIs("HSC", Vex::makePtr<VxlanController::VniStatusDirV2>());
    EXPECT_EQ(sourcesOf(fabric, {.source = "HSC"}), "| HSC ");
    EXPECT_EQ(sourcesOf(fabric, {.source = "all"}), "leaf1 leaf2 | HSC ");
}

TEST(Received, AbsentStateIsSkipped) {
    Fabric fabric;
    fabric.switches = nullptr;
    fabric.sources = nullptr;
    fabric.evpn.list = nullptr;
    for (char const * word : {"", "all", "hsc", "qvx", "evpn", "leaf1"}) {
        EXPECT_EQ(sourcesOf(fabric, {.source = word}), "| ") << word;
    }
}

TEST(Received, OtherListedSourcesAreLookedUpAsSwitches) {
    Fabric fabric;
    auto const stranger = Vex::makePtr<VxlanController::VniStatusDirV2>();
    stranger->vniStatusV2Is(Vxlan::Vni(1))
        ->macVtepIs(VxlanController::MacVtepV2(Nolt::EthAddr::fromString("02:00:00:00:00:01"),
                                               Nolt::IpAddr(1), 0));
    fabric.sources->vniStatusDirIs("XYZ", stranger);
    EXPECT_EQ(sourcesOf(fabric, {}), "| ");
    fabric.switches = nullptr;
    EXPECT_EQ(sourcesOf(fabric, {}), "| ");
}

TEST(Received, AnEntryOfAnotherTypeIsSkipped) {
    Fabric fabric = fabricOfAllSources();
    fabric.switches->entityIs("odd", Vex::makePtr<VxlanController::VniStatusV2>(Vxlan::Vni(10)));
    fabric.switches->dirIs("pod");
    EXPECT_EQ(sourcesOf(fabric, {.source = "all"}), "leaf1 leaf2 | ");
    EXPECT_EQ(sourcesOf(fabric, {.source = "odd"}), "| ");
    EXPECT_EQ(sourcesOf(fabric, {.source = "pod"}), "| ");
}

TEST(Received, TheVniFilterSelectsThatVniOfEverySource) {
    Fabric fabric;
    fabric.unicast("leaf1", 10, "02:00:00:00:00:01", "10.0.0.1")
        .unicast("leaf1", 11, "02:00:00:00:00:02", "10.0.0.1")
        .unicast("leaf2", 11, "02:00:00:00:00:03", "10.0.0.1")
        .host(10, "02:00:00:00:00:04", "10.0.0.1")
        .host(11, "02:00:00:00:00:05", "10.0.0.1");
    EXPECT_EQ(sourcesOf(fabric, {.vni = Vxlan::Vni(10)}), "leaf1 | EVPN ");
    EXPECT_EQ(sourcesOf(fabric, {.vni = Vxlan::Vni(12)}), "| ");
}

TEST(Received, AVniFilterOutOfRangeRaisesARangeErrorAndPrintsNothing) {
    Fabric fabric = fabricOfAllSources();
    OutputFile const file;
    auto const command = receivedCommand(fabric, {.vni = Vxlan::VniOrNone(0x1000001)});
    try {
        command->render(static_cast<Vex::U32>(file.fd()), textFormat, 2);
        FAIL() << "nothing was thrown";
    } catch (Vex::RangeError const & error) {
        EXPECT_STREQ(error.what(), "Vni::value < Vni::min or > Vni::max not allowed");
    }
    EXPECT_EQ(file.content(), "");
}

TEST(Received, RenderingAgainCollectsAgain) {
    Fabric fabric = fabricOfAllSources();
    auto const command = receivedCommand(fabric);
    std::string const first = rendered(command);
    auto const firstDir = command->switchDir();
    EXPECT_EQ(rendered(command), first);
    EXPECT_NE(command->switchDir(), firstDir);
    fabric.unicast("leaf1", 10, "02:00:00:00:00:77", "10.0.0.1");
    EXPECT_NE(rendered(command), first);
}

TEST(Received, DestroyingTheCommandFreesEveryModelObject) {
    Fabric const fabric = fabricOfAllSources();
    auto const live = [] { return Vex::allocTrackLiveCount("VxlanController::Cli::"); };
    Vex::U64 const before = live();
    {
        auto const command = receivedCommand(fabric);
        rendered(command);
        EXPECT_GT(live(), before + 10);
    }
    EXPECT_EQ(live(), before);
}

TEST(Received, TracesItsFunctionsAndMissingState) {
    Fabric fabric;
    fabric.switches->entityIs("odd", Vex::makePtr<VxlanController::VniStatusV2>(Vxlan::Vni(10)));
    fabric.evpn.list->hostFloodTableIs("EVPN", Cli::hostFloodTableFactory());
    auto const command = receivedCommand(fabric);
    Traced const traced;
    command->initialize();
    EXPECT_EQ(traced.text,
              "8 void VxlanController::Cli::VcsVniReceived::initialize()\n"
              "8 void VxlanController::Cli::VcsVniReceived::copySwitch(Vex::Name) switchId odd\n"
              "1 vniStatusDirV2 not created for odd\n"
              "8 void VxlanController::Cli::VcsVniReceived::copyTable(Vex::Name) tableName EVPN\n"
              "1 No hostTable created for EVPN\n"
              "1 No floodTable created for EVPN\n");
}

TEST(Received, TracesAMissingSourceAndAMissingTablePair) {
    Fabric const fabric;
    Traced const traced;
    receivedCommand(fabric, {.source = "hsc"})->initialize();
    receivedCommand(fabric, {.source = "evpn"})->initialize();
    EXPECT_EQ(traced.text,
              "8 void VxlanController::Cli::VcsVniReceived::initialize()\n"
              "8 void VxlanController::Cli::VcsVniReceived::copySwitch(Vex::Name) switchId HSC\n"
              "1 vniStatusDirV2 not created for HSC\n"
              "8 void VxlanController::Cli::VcsVniReceived::initialize()\n"
              "8 void VxlanController::Cli::VcsVniReceived::copyTable(Vex::Name) tableName EVPN\n"
              "1 hostFloodTable not created for EVPN\n");
}

TEST(Received, AnUnknownSwitchIsNotTracedAsMissingState) {
    Fabric const fabric;
    Traced const traced;
    receivedCommand(fabric, {.source = "leaf9"})->initialize();
    EXPECT_EQ(traced.text, "8 void VxlanController::Cli::VcsVniReceived::initialize()\n");
}
