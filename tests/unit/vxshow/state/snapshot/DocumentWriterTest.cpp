#include "vxshow/state/snapshot/Document.h"

#include "outfmt/Interrupt.h"
#include "state/FloodTable.h"
#include "state/HostTable.h"
#include "state/LRStatusV2.h"
#include "tests/unit/vxshow/state/snapshot/Snapshots.h"
#include "vxshow/state/snapshot/ValuesWriter.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace vxshow::test {

using namespace state;
using namespace state::snapshot;

namespace {

namespace Cli = VxlanController::Cli;

std::string written(Mount const & mount) {
    TextFile const file("");
    outfmt::Printer printer(file.descriptor(), 2, true, false, true, 0);
    writeSnapshot(mount, printer);
    std::ifstream const content(file.path());
    std::ostringstream text;
    text << content.rdbuf();
    return text.str();
}

/// Why the mount cannot be written.
std::string unwritable(Mount const & mount) {
    try {
        return "written: " + written(mount);
    } catch (Unwritable const & error) {
        return error.what();
    }
}

Nolt::IpAddr ip(std::string_view text) {
    return Nolt::IpAddr::fromString(text);
}

Mount withSwitch(std::string const & name) {
    Mount mount;
    mount.received.switches = Vex::makePtr<Vex::Dir>();
    mount.received.switches->entityIs(name, Vex::makePtr<VxlanController::VniStatusDirV2>());
    return mount;
}

Mount withRouter(std::string const & name, Vex::Ptr<VxlanController::LRStatusV2> const & status) {
    Mount mount;
    mount.routers.lRStatusDir = Vex::makePtr<Vex::Dir>();
    mount.routers.lRStatusDir->entityIs(name, status);
    return mount;
}

} // namespace

TEST(DocumentWriter, RefusesANameThatIsNotUtf8) {
    for (std::string const name :
         {"\xff", "leaf\xc3", "\xc0\x80", "\xed\xa0\x80", "\xf4\x90\x80\x80"}) {
        EXPECT_EQ(unwritable(withSwitch(name)),
                  "the name " + Vex::quoted(name) +
                      " is not UTF-8, and a snapshot is nothing else");
    }
    EXPECT_EQ(unwritable(withSwitch("\xc3\xa9\xf0\x9f\x98\x80")).substr(0, 8), "written:");
}

TEST(DocumentWriter, RefusesEveryOtherTextThatIsNotUtf8) {
    std::string const why = "the name '\\xff' is not UTF-8, and a snapshot is nothing else";
    auto const status = Vex::makePtr<VxlanController::LRStatusV2>("prod");
    VxlanController::LRIpUplinkPortV2 uplink(Nolt::IpGenAddrWithMask::fromString("10.0.0.1/24"), {},
                                             {});
    uplink.portVlanIs({"\xff", {}});
    status->ipUplinkPortIs(uplink);
    EXPECT_EQ(unwritable(withRouter("prod", status)), why);
    EXPECT_EQ(unwritable(withRouter("\xff", Vex::makePtr<VxlanController::LRStatusV2>("x"))), why);

    for (auto const & [path, kind] : {std::pair{"\xff", "Vxlan"}, {"path", "\xff"}}) {
        Mount mount;
        mount.routers.publishStatus = Vex::makePtr<Statestore::PublishStatus>();
        mount.routers.publishStatus->systemIs({})->publishedMountIs({path, kind});
        EXPECT_EQ(unwritable(mount), why);
    }

    Mount mount;
    auto const dir = Vex::makePtr<VxlanController::SwitchInfoDir>();
    mount.routers.switchInfoDir = dir;
    dir->vtepMapIs(ip("10.0.0.1"))->switchIdIs({"\xff", ""});
    EXPECT_EQ(unwritable(mount), why);
}

TEST(DocumentWriter, RefusesAnUnknownSource) {
    Mount mount;
    mount.advertised.sources = Cli::vniStatusDirListFactory();
    mount.advertised.sources->vniStatusDirIs("QVX",
                                             Vex::makePtr<VxlanController::VniStatusDirV2>());
    EXPECT_EQ(unwritable(mount), "a snapshot has no place for the source 'QVX'");
}

TEST(DocumentWriter, RefusesAnEntryWithoutAnAddress) {
    auto const status = Vex::makePtr<VxlanController::LRStatusV2>("prod");
    status->ipPortIs(VxlanController::LRIpPortV2());
    EXPECT_EQ(unwritable(withRouter("prod", status)),
              "an entry has no address; a snapshot needs one");
}

TEST(DocumentWriter, RefusesAVtepThatIsNamedByItsInterface) {
    Mount mount;
    auto const dir = Vex::makePtr<VxlanController::SwitchInfoDir>();
    mount.routers.switchInfoDir = dir;
    dir->switchInfoIs("leaf1")->vtepMapIs({ip("10.0.0.1"), "Vxlan1"},
                                          dir->vtepMapIs(ip("10.0.0.1")));
    EXPECT_EQ(unwritable(mount),
              "a VTEP is named by its interface 'Vxlan1', which a snapshot cannot express");
}

TEST(DocumentWriter, RefusesAVtepThatIsNotInTheDirectory) {
    Mount mount;
    auto const dir = Vex::makePtr<VxlanController::SwitchInfoDir>();
    mount.routers.switchInfoDir = dir;
    dir->switchInfoIs("leaf1")->vtepMapIs({ip("10.0.0.1"), ""},
                                          Vex::makePtr<VxlanController::VtepMap>(ip("10.0.0.1")));
    EXPECT_EQ(unwritable(mount), "the VTEP 10.0.0.1 of the switch 'leaf1' is not among the VTEPs");
}

TEST(DocumentWriter, WritesAVtepStoredAsFalseSinceCommandsListIt) {
    Mount mount = withSwitch("leaf1");
    auto const source = Vex::makePtr<VxlanController::VniStatusDirV2>();
    VxlanController::MacVtepMultiPathV2 entry{Nolt::EthAddr::ofValue(1)};
    entry.vtepIpIs(ip("10.0.0.1"), false);
    source->vniStatusV2Is(Vxlan::Vni(10))->macVtepMultiPathIs(entry);
    mount.received.switches->entityIs("leaf1", source);
    EXPECT_NE(written(mount).find(R"({"00:00:00:00:00:01":["10.0.0.1"]})"), std::string::npos);
}

TEST(DocumentWriter, OmitsAVtepToWhichEvpnFloodsNothing) {
    Mount mount;
    VcsEvpn::FloodTableWriter flood("flood lists");
    flood.insert({Vxlan::Vni(10), ip("10.0.0.1")}, VcsEvpn::FloodEntry());
    flood.insert({Vxlan::Vni(10), ip("10.0.0.2")},
                 VcsEvpn::FloodEntry(VcsEvpn::FloodEntry::TunnelType::ingressReplication));
    auto const tables = Cli::hostFloodTableFactory();
    tables->floodTableIs(flood.table());
    mount.received.evpn = Cli::hostFloodTableListFactory();
    mount.received.evpn->hostFloodTableIs("EVPN", tables);
    EXPECT_EQ(written(mount), R"({"format":"vxlan-controller-state","version":1,"received":)"
                              R"({"evpn":{"EVPN":{"flood":{"10":["10.0.0.2"]}}}}})"
                              "\n");
}

TEST(DocumentWriter, DoesNotDependOnInsertionOrder) {
    auto const tables = [](std::initializer_list<Vex::U64> macs) {
        Mount mount = withSwitch("leaf1");
        auto const source = Vex::makePtr<VxlanController::VniStatusDirV2>();
        for (auto const mac : macs) {
            source->vniStatusV2Is(Vxlan::Vni(10))
                ->macVtepIs({Nolt::EthAddr::ofValue(mac), ip("10.0.0.1"), 0});
        }
        mount.received.switches->entityIs("leaf1", source);
        return written(mount);
    };
    EXPECT_EQ(tables({3, 1, 2}), tables({2, 3, 1}));
}

TEST(DocumentWriter, StopsOnInterrupt) {
    outfmt::requestInterrupt();
    EXPECT_THROW(written(withSwitch("leaf1")), outfmt::SigIntException);
    outfmt::clearInterrupt();
}

TEST(DocumentWriter, WritesWhatIsBesideTheTablesAsItIsRead) {
    std::string const document =
        R"({"format":"vxlan-controller-state","version":1,)"
        R"("routers":{"switches":{},"vteps":{},"switchNames":{"leaf1":["00:1c:73:00:00:01","x"]}},)"
        R"("origin":{"made":"2026-11-23T02:10:11.125Z","version":"v","sources":[)"
        R"({"name":"leaf1","kind":"frr","role":"evpn","read":"2026-11-23T02:10:11.000Z",)"
        R"("failure":"f","remarks":"r","counts":{"vnis":2}},)"
        R"({"name":"leaf2","kind":"ovsdb","role":"qvx"}]},)"
        R"("details":{"leaf1":{"macs":[{"vni":10,"mac":"02:00:00:00:00:01","duplicate":true,)"
        R"("sticky":true,"inactive":true,"segment":"03:00:00:00:00:00:00:00:00:01","age":0}],)"
        R"("vniNames":[{"vni":10,"name":"ls\n10"}],)"
        R"("l3Vnis":[{"vni":5000,"vrf":"blue"},{"vni":5001,"vrf":"red","up":true}]}},)"
        R"("uncounted":{"received":{"HSC":["moves","changes","preference"],"leaf1":["preference"]},)"
        R"("advertised":["changes"]}})"
        "\n";
    EXPECT_EQ(written(mounted(document)), document);
}

} // namespace vxshow::test
