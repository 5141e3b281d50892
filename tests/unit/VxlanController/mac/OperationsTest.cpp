#include "VxlanController/mac/AdvertisedText.h"
#include "VxlanController/mac/CopyEvpn.h"
#include "VxlanController/mac/CopyVniFdbStatus.h"
#include "VxlanController/mac/CopyVniStatus.h"
#include "VxlanController/mac/ReceivedJson.h"
#include "VxlanController/mac/ReceivedText.h"
#include "VxlanController/mac/VniTablesJson.h"
#include "VxlanController/mac/VtepFilter.h"
#include "tests/unit/VxlanController/AdvertisedFabric.h"
#include "tests/unit/VxlanController/Rendered.h"

#include <gtest/gtest.h>

namespace Cli = VxlanController::Cli;

namespace {

constexpr char const * mac1 = "02:00:00:00:00:01";
constexpr char const * mac2 = "02:00:00:00:00:02";

Vxlan::Vni const vni10(10);

Nolt::EthAddr eth(char const * text) {
    return Nolt::EthAddr::fromString(text);
}

/// Three tables: one MAC alone in the unicast table, the other in all three.
template <class Tables>
void fill(Tables & tables) {
    addUnicast(tables, mac1, "10.0.0.1", 3);
    addUnicast(tables, mac2, "10.0.0.2");
    addMultipath(tables, mac2, {"10.0.0.2", "10.0.0.3"});
    addFlood(tables, mac2, {"10.0.0.4"});
}

/// What a printer that `print` was called with has written.
template <class Print>
std::string printed(Vex::U32 format, Print && print) {
    OutputFile const file;
    {
        outfmt::Printer printer(file.fd(), format, true, false, true, 0);
        print(printer);
        printer.flush();
    }
    return file.content();
}

std::string shown(Vex::Ptr<Cli::SwitchDir const> const & directory) {
    return printed(textFormat, [&](outfmt::Printer & printer) {
        int counter = 0;
        Cli::printTable(printer, "ucast", false, directory, counter);
        Cli::printTable(printer, "bum", false, directory, counter);
        printer.addFrills("%d\n", counter);
    });
}

std::string shown(Vex::Ptr<Cli::VniStatusList const> const & vnis) {
    return printed(textFormat, [&](outfmt::Printer & printer) {
        Cli::printFdbTable(printer, "ucast", false, vnis);
        Cli::printFdbTable(printer, "bum", false, vnis);
    });
}

/// The state of one VNI, and somewhere to copy it to.
class MacOperations : public testing::Test {
protected:
    MacOperations() {
        fill(*status);
        fill(*fdbStatus);
    }

    Vex::Ptr<VxlanController::VniStatusV2> status =
        Vex::makePtr<VxlanController::VniStatusV2>(vni10);
    Vex::Ptr<VxlanController::VniFdbStatusV2> fdbStatus =
        Vex::makePtr<VxlanController::VniFdbStatusV2>();
    Vex::Ptr<Cli::SwitchDir> sources = receivedCommand(Fabric())->switchDirIs();
    Vex::Ptr<Cli::VniStatusList> vnis = advertisedCommand(AdvertisedFabric())->vniDirIs();
    Vex::Ptr<Cli::VtepList> vteps = Cli::vtepListFactory();
};

} // namespace

TEST_F(MacOperations, AStatusIsCopiedUnderItsSourceAndVni) {
    Cli::copyVniStatus(status, sources, "leaf1", vni10, {}, nullptr);
    EXPECT_EQ(shown(sources),
              "leaf1             10          0200.0000.0001  10.0.0.1            3\n"
              "leaf1             10          0200.0000.0002  10.0.0.2            0\n"
              "leaf1             10          0200.0000.0002  10.0.0.2       \n"
              "leaf1             10          0200.0000.0002  10.0.0.3       \n"
              "leaf1             10          0200.0000.0002  10.0.0.4       \n"
              "5\n");
}

TEST_F(MacOperations, AStatusOfWhichNothingIsSelectedMakesNoSource) {
    Cli::copyVniStatus(status, sources, "leaf1", vni10, eth("02:00:00:00:00:09"), vteps);
    vteps->vtepIs(Nolt::IpAddr::fromString("10.0.0.9"), true);
    Cli::copyVniStatus(status, sources, "leaf1", vni10, {}, vteps);
    EXPECT_TRUE(sources->switchList().empty());
}

TEST_F(MacOperations, TheEntriesOfOneMacAreCopiedOneTableEach) {
    Cli::copyMacVtep(status, sources, "a", vni10, eth(mac1));
    Cli::copyMultiPath(status, sources, "b", vni10, eth(mac2));
    Cli::copyFloodList(status, sources, "c", vni10, eth(mac2));
    EXPECT_EQ(shown(sources),
              "a                 10          0200.0000.0001  10.0.0.1            3\n"
              "b                 10          0200.0000.0002  10.0.0.2       \n"
              "b                 10          0200.0000.0002  10.0.0.3       \n"
              "c                 10          0200.0000.0002  10.0.0.4       \n"
              "4\n");
}

TEST_F(MacOperations, AnAbsentFloodListIsNotCopied) {
    Cli::copyFloodList(status, sources, "c", vni10, eth(mac1));
    Cli::copyFdbFloodList(fdbStatus, vnis, vni10, eth(mac1));
    EXPECT_TRUE(sources->switchList().empty());
    EXPECT_TRUE(vnis->vniEntry().empty());
}

TEST_F(MacOperations, BothKindsOfAdvertisedStatusAreCopiedAlike) {
    Cli::copyVniFdbStatus(fdbStatus, vnis, vni10, {}, nullptr);
    auto const ofTheDirectory = shown(vnis);
    EXPECT_EQ(ofTheDirectory, "10          0200.0000.0001  10.0.0.1            3\n"
                              "10          0200.0000.0002  10.0.0.2            0\n"
                              "Total Mac Addresses for this criterion: 2\n"
                              "10          0200.0000.0002  10.0.0.2        10.0.0.3       \n"
                              "Total Mac Addresses for this criterion: 1\n");

    auto const ofTheHsc = advertisedCommand(AdvertisedFabric())->vniDirIs();
    Cli::copyVniFdbStatus(status.ptr(), ofTheHsc, vni10, {}, nullptr);
    EXPECT_EQ(shown(ofTheHsc), ofTheDirectory);
}

TEST_F(MacOperations, OnlyAListingOfEveryMacLeavesOutTheFloodListOfAMultipathMac) {
    Cli::copyVniFdbStatus(fdbStatus, vnis, vni10, {}, nullptr);
    EXPECT_FALSE(vnis->vniEntry(vni10)->macVtepFloodListTable(eth(mac2)));
    Cli::copyVniFdbStatus(fdbStatus, vnis, vni10, eth(mac2), nullptr);
    EXPECT_TRUE(vnis->vniEntry(vni10)->macVtepFloodListTable(eth(mac2)));
}

TEST_F(MacOperations, TheAdvertisedEntriesOfOneMacAreCopiedOneTableEach) {
    Cli::copyFdbMacVtep(fdbStatus, vnis, Vxlan::Vni(1), eth(mac1));
    Cli::copyFdbMacVtep(status.ptr(), vnis, Vxlan::Vni(2), eth(mac1));
    Cli::copyFdbMultiPath(fdbStatus, vnis, Vxlan::Vni(3), eth(mac2));
    Cli::copyFdbMultiPath(status.ptr(), vnis, Vxlan::Vni(4), eth(mac2));
    Cli::copyFdbFloodList(fdbStatus, vnis, Vxlan::Vni(5), eth(mac2));
    Cli::copyFdbFloodList(status.ptr(), vnis, Vxlan::Vni(6), eth(mac2));
    EXPECT_EQ(shown(vnis), "1           0200.0000.0001  10.0.0.1            3\n"
                           "2           0200.0000.0001  10.0.0.1            3\n"
                           "Total Mac Addresses for this criterion: 2\n"
                           "3           0200.0000.0002  10.0.0.2        10.0.0.3       \n"
                           "4           0200.0000.0002  10.0.0.2        10.0.0.3       \n"
                           "5           0200.0000.0002  10.0.0.4       \n"
                           "6           0200.0000.0002  10.0.0.4       \n"
                           "Total Mac Addresses for this criterion: 4\n");
}

TEST_F(MacOperations, EvpnTablesAreCopiedUnderTheirSourceOrWithoutOne) {
    Evpn evpn;
    evpn.host(10, mac1, "10.8.0.1", 2);
    evpn.floodVtep(20, "10.8.0.2");
    evpn.publish();
    auto const tables = evpn.list->hostFloodTable("EVPN");
    Cli::copyHostTable(tables->hostTable(), sources, "EVPN", {}, {}, nullptr);
    Cli::copyFloodTable(tables->floodTable(), sources, "EVPN", {}, {}, nullptr);
    EXPECT_EQ(shown(sources),
              "EVPN              10          0200.0000.0001  10.8.0.1            2\n"
              "EVPN              20          0000.0000.0000  10.8.0.2       \n"
              "2\n");

    Cli::copyHostTable(tables->hostTable(), vnis, {}, {}, nullptr);
    Cli::copyFloodTable(tables->floodTable(), vnis, {}, {}, nullptr);
    EXPECT_EQ(shown(vnis), "10          0200.0000.0001  10.8.0.1            2\n"
                           "Total Mac Addresses for this criterion: 1\n"
                           "20          0000.0000.0000  10.8.0.2       \n"
                           "Total Mac Addresses for this criterion: 1\n");
}

TEST_F(MacOperations, SingleEvpnEntriesAreCopiedUnderTheirSourceOrWithoutOne) {
    VcsEvpn::Host const host(Nolt::IpAddr::fromString("10.8.0.1"), 2);
    auto const vtep = Nolt::IpAddr::fromString("10.8.0.2");
    Cli::copyHost(host, sources, "EVPN", vni10, eth(mac1));
    Cli::copyFloodEntry(sources, "EVPN", vni10, vtep);
    Cli::copyHost(host, vnis, vni10, eth(mac1));
    Cli::copyFloodEntry(vnis, vni10, vtep);
    EXPECT_EQ(shown(sources),
              "EVPN              10          0200.0000.0001  10.8.0.1            2\n"
              "EVPN              10          0000.0000.0000  10.8.0.2       \n"
              "2\n");
    EXPECT_EQ(shown(vnis), "10          0200.0000.0001  10.8.0.1            2\n"
                           "Total Mac Addresses for this criterion: 1\n"
                           "10          0000.0000.0000  10.8.0.2       \n"
                           "Total Mac Addresses for this criterion: 1\n");
}

TEST_F(MacOperations, ANullEvpnTableIsSkipped) {
    Cli::copyHostTable(nullptr, sources, "EVPN", {}, {}, nullptr);
    Cli::copyFloodTable(nullptr, vnis, {}, {}, nullptr);
    EXPECT_TRUE(sources->switchList().empty());
    EXPECT_TRUE(vnis->vniEntry().empty());
}

TEST_F(MacOperations, FilterTestsLookUpTheMac) {
    vteps->vtepIs(Nolt::IpAddr::fromString("10.0.0.3"), true);
    EXPECT_FALSE(Cli::macVtepIpFiltered(vteps, eth(mac2), status));
    EXPECT_TRUE(Cli::macVtepMultiPathIpFiltered(vteps, eth(mac2), status));
    EXPECT_FALSE(Cli::macVtepFloodListIpFiltered(vteps, eth(mac2), fdbStatus));
    vteps->vtepIs(Nolt::IpAddr::fromString("10.0.0.2"), true);
    vteps->vtepIs(Nolt::IpAddr::fromString("10.0.0.4"), true);
    EXPECT_TRUE(Cli::macVtepIpFiltered(vteps, eth(mac2), fdbStatus));
    EXPECT_TRUE(Cli::macVtepFloodListIpFiltered(vteps, eth(mac2), status));
}

TEST_F(MacOperations, AnAbsentMacPassesOnlyWithoutALimitOrAtTheZeroAddress) {
    auto const absent = eth("02:00:00:00:00:09");
    EXPECT_TRUE(Cli::macVtepFloodListIpFiltered(nullptr, absent, status));
    EXPECT_TRUE(Cli::macVtepFloodListIpFiltered(vteps, absent, status));
    vteps->vtepIs(Nolt::IpAddr(), true);
    EXPECT_TRUE(Cli::macVtepIpFiltered(vteps, absent, status));
    EXPECT_FALSE(Cli::macVtepMultiPathIpFiltered(vteps, absent, status));
    EXPECT_FALSE(Cli::macVtepFloodListIpFiltered(vteps, absent, status));
}

TEST_F(MacOperations, TheFloodTableOfBothDocumentsIsTheSame) {
    Cli::copyVniStatus(status, sources, "leaf1", vni10, {}, nullptr);
    auto const tables = sources->switchList("leaf1")->vniStatusList()->vniEntry(vni10);
    auto const document = [&](auto && render) {
        return printed(jsonFormat, [&](outfmt::Printer & printer) {
            printer.start();
            render(printer);
            printer.end();
        });
    };
    EXPECT_EQ(
        document([&](outfmt::Printer & printer) { Cli::renderBumTable(tables.ptr(), printer); }),
        document(
            [&](outfmt::Printer & printer) { Cli::renderFdbBumTable(tables.ptr(), printer); }));
    auto const unicast = document(
        [&](outfmt::Printer & printer) { Cli::renderUcastTable(tables.ptr(), printer, 1); });
    EXPECT_NE(unicast.find(R"("timeLearned":0)"), std::string::npos) << unicast;
}

using MacOperationsDeathTest = MacOperations;

TEST_F(MacOperationsDeathTest, RowsOfAnotherKindAreAFailedAssertion) {
    Cli::copyVniStatus(status, sources, "leaf1", vni10, {}, nullptr);
    Cli::copyVniFdbStatus(fdbStatus, vnis, vni10, {}, nullptr);
    OutputFile const file;
    outfmt::Printer printer(file.fd(), textFormat, true, false, true, 0);
    int counter = 0;
    EXPECT_DEATH(Cli::printTable(printer, "all", false, sources, counter),
                 "printTable: assertion '0' failed");
    EXPECT_DEATH(Cli::printFdbTable(printer, "all", false, vnis),
                 "printFdbTable: assertion '0' failed");
}
