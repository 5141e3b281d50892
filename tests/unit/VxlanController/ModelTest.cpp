#include "VxlanController/VxlanControllerCliModel.h"

#include "Vex/Reinstantiation.h"
#include "Vex/Type.h"

#include <gtest/gtest.h>

using namespace VxlanController::Cli;
using Nolt::EthAddr;
using Nolt::IpAddr;
using Quay::Seqno32;
using Vxlan::Vni;

namespace {

EthAddr const mac = EthAddr::fromString("02:00:00:00:00:01");

} // namespace

TEST(Model, TheSameMacTwiceLeavesTheLastVtepAndMoveCount) {
    auto const status = VniStatusList::VniStatusListIs()->vniEntryIs(Vni(10));
    status->macVtepTableIs(MacVtep(mac, IpAddr(1), Seqno32(1)));
    status->macVtepTableIs(MacVtep(mac, IpAddr(2), Seqno32(5)));
    EXPECT_EQ(status->macVtepTable().size(), 1U);
    EXPECT_EQ(status->macVtepTable(mac), MacVtep(mac, IpAddr(2), Seqno32(5)));
}

TEST(Model, AVniThatIsPresentKeepsItsTables) {
    auto const list = VniStatusList::VniStatusListIs();
    auto const first = list->vniEntryIs(Vni(10));
    first->macVtepTableIs(MacVtep(mac, IpAddr(1), Seqno32(1)));
    EXPECT_EQ(list->vniEntryIs(Vni(10)), first);
    EXPECT_EQ(first->macVtepTable().size(), 1U);
    EXPECT_TRUE(list->vniEntryHas(Vni(10)));
    EXPECT_FALSE(list->vniEntryHas(Vni(11)));
    EXPECT_EQ(list->vniEntry(Vni(11)), nullptr);
}

TEST(Model, DeletingAnAbsentKeyChangesNothing) {
    auto const status = VniStatusList::VniStatusListIs()->vniEntryIs(Vni(10));
    status->macVtepTableIs(MacVtep(mac, IpAddr(1), Seqno32(1)));
    EXPECT_EQ(status->macVtepTableDel(EthAddr()), MacVtep());
    EXPECT_EQ(status->macVtepFloodListTableDel(mac), nullptr);
    EXPECT_EQ(status->macVtepTable().size(), 1U);
    EXPECT_EQ(status->macVtepTableDel(mac), MacVtep(mac, IpAddr(1), Seqno32(1)));
    EXPECT_TRUE(status->macVtepTable().empty());
}

TEST(Model, ADefaultMultipathValueIsFalse) {
    EXPECT_TRUE(!MacVtepMultiPath());
    EXPECT_FALSE(!MacVtepMultiPath(mac));
    MacVtepMultiPath withVtep;
    withVtep.vtepIpListIs(IpAddr(1), true);
    EXPECT_FALSE(!withVtep);
    EXPECT_TRUE(!LRIpUplinkPortAddress());
}

TEST(Model, VnisSwitchesAndMacsIterateInKeyOrder) {
    auto const dir = SwitchDir::SwitchDirIs();
    for (char const * name : {"leaf2", "leaf10", "leaf1"}) {
        dir->switchListIs(name);
    }
    auto const list = dir->switchListIs("leaf1")->vniStatusListIs();
    for (Vex::U32 vni : {65536U, 4096U}) {
        list->vniEntryIs(Vni(vni));
    }
    std::string order;
    for (Switch const & source : dir->switchList()) {
        order += source.switchId().stringValue() + " ";
    }
    for (VniStatus const & status : list->vniEntry()) {
        order += status.vni().stringValue() + " ";
    }
    EXPECT_EQ(order, "leaf1 leaf10 leaf2 4096 65536 ");
}

TEST(Model, ANullPointerRemovesAnEntryOfASharedCollection) {
    auto const list = vniStatusDirListFactory();
    auto const first = Vex::makePtr<VxlanController::VniStatusDirV2>();
    auto const second = Vex::makePtr<VxlanController::VniStatusDirV2>();
    EXPECT_EQ(list->vniStatusDirIs("HSC", first), first);
    EXPECT_EQ(list->vniStatusDirIs("HSC", second), second);
    EXPECT_EQ(list->vniStatusDir("HSC"), second);
    list->vniStatusDirIs("HSC", nullptr);
    EXPECT_EQ(list->vniStatusDir("HSC"), nullptr);
    EXPECT_TRUE(list->vniStatusDir().empty());
}

TEST(Model, AnIpWithAnotherMacRaisesAndKeepsTheFirst) {
    auto const table = VxlanArpTable::VxlanArpTableIs("10");
    auto const ip = Nolt::IpGenAddr::fromString("10.0.0.9");
    auto const entry = table->arpEntryIs(ip, mac, 1, 2);
    EXPECT_EQ(table->arpEntryIs(ip, mac, 1, 2), entry);
    try {
        table->arpEntryIs(ip, EthAddr(), 9, 9);
        FAIL() << "nothing was thrown";
    } catch (Vex::ReinstantiationError const & error) {
        EXPECT_STREQ(error.what(),
                     "VxlanController::Cli::VxlanArpEntry 10.0.0.9: macAddress cannot change "
                     "from 02:00:00:00:00:01 to 00:00:00:00:00:00");
    }
    EXPECT_EQ(table->arpEntry(ip), entry);
}

TEST(Model, FactoriesReturnNotificationActiveObjects) {
    EXPECT_TRUE(vtepListFactory()->hasNotificationActive());
    EXPECT_TRUE(macVtepFloodListFactory(mac)->hasNotificationActive());
    EXPECT_EQ(macVtepFloodListFactory(mac)->macAddr(), mac);
    EXPECT_TRUE(VniStatusList::VniStatusListIs()->vniEntryIs(Vni(1))->hasNotificationActive());
}

TEST(Model, TypesAreListedInTheOrderOfRegistration) {
    std::string order;
    for (Vex::Type const * type : Vex::typeTable()) {
        if (type->name.starts_with("VxlanController::Cli::")) {
            order += std::string(type->name.substr(22)) + " ";
        }
    }
    EXPECT_EQ(order,
              "HostFloodTable VcsLRMap SwitchDir VxlanFdbSet ArpAdvertised VtepList "
              "VniStatusDirList HostFloodTableList SwitchMap VcsVniAdvertised VxlanVtepSet "
              "LRMapBase LRRouteByName LRMap MacVtepMultiPath LRDetail VxlanVtep VniStatusList "
              "ArpReceived MacVtepFloodList VxlanArpEntry LRIpUplinkPortAddress LRRoute VcsLR "
              "VxlanArpTable Switch VcsLRRoute MacVtep VcsVniReceived VniStatus ");
}

TEST(Model, AttributesAreNumberedByKindOfType) {
    EXPECT_EQ(VniStatus::_vexType.attribute("vni")->number, 130U);
    EXPECT_EQ(VniStatus::_vexType.attribute("macVtepFloodListTable")->number, 134U);
    EXPECT_EQ(VcsLR::_vexType.attribute("lRStatusDir")->number, 258U);
    EXPECT_EQ(VcsLR::_vexType.attribute("switchMap")->number, 133U);
    EXPECT_EQ(MacVtep::_vexType.attribute("macAddr")->number, 2U);
    EXPECT_EQ(MacVtep::_vexType.attribute("moveCount")->number, 4U);
    EXPECT_EQ(VcsLR::_vexType.base, &LRMapBase::_vexType);
}
