#include "Vex/Type.h"

#include <gtest/gtest.h>

/// The types and attributes of the model as generic tools see them. Written by hand, so that a
/// change to the model file shows up here as a change to what tools see.
namespace {

std::string listed(Vex::Type const & type) {
    std::string text(type.name);
    text += type.kind == Vex::Type::Kind::entity ? ", entity" : ", value";
    text += type.base ? ", base " + std::string(type.base->name) : "";
    text += " (";
    for (auto const argument : type.constructorArguments) {
        text += (text.ends_with('(') ? "" : ", ") + std::string(argument);
    }
    text += ")\n";
    for (auto const & attribute : type.attributes) {
        text += "  " + std::to_string(attribute.number) + " " + std::string(attribute.name) +
                " : " + std::string(kindText(attribute.kind)) + ", " + std::string(attribute.type);
        text += attribute.key.empty() ? "\n" : "[" + std::string(attribute.key) + "]\n";
    }
    return text;
}

std::string wholeTable() {
    std::string text;
    for (auto const * type : Vex::typeTable()) {
        text += listed(*type);
    }
    return text;
}

constexpr char const * expectedTypes = R"(VxlanController::Cli::HostFloodTable, entity ()
  130 hostTable : settable entity pointer, VcsEvpn::HostTable
  131 floodTable : settable entity pointer, VcsEvpn::FloodTable
VxlanController::Cli::VcsLRMap, entity, base VxlanController::Cli::LRMapBase (switchPublishStatus, switchInfoDir, lRNameFilter, switchFilter, vtepFilter)
  258 lRNameFilter : constructor argument, Vex::String
  259 switchFilter : constructor argument, Vex::String
  260 vtepFilter : entity pointer, VxlanController::Cli::VtepList
  261 render : method, (fd : U32, fmt : U32, revision : U32)
VxlanController::Cli::SwitchDir, entity ()
  130 switchList : owned entity collection, VxlanController::Cli::Switch[Vex::Name]
VxlanController::Cli::VxlanFdbSet, entity ()
  130 arpTable : owned entity collection, VxlanController::Cli::VxlanArpTable[Vex::String]
VxlanController::Cli::ArpAdvertised, entity (vniStatusDir, vniDotted, vniFilter, macFilter, ipFilter)
  130 vniStatusDir : entity pointer, Vex::Dir
  131 vniDotted : constructor argument, bool
  132 vniFilter : constructor argument, Vxlan::VniOrNone
  133 macFilter : constructor argument, Nolt::EthAddr
  134 ipFilter : constructor argument, Nolt::IpGenAddr
  135 render : method, (fd : U32, fmt : U32, revision : U32)
VxlanController::Cli::VtepList, entity ()
  130 vtep : hashed set, bool[Nolt::IpAddr]
VxlanController::Cli::VniStatusDirList, entity ()
  130 vniStatusDir : shared entity collection, VxlanController::VniStatusDirV2[Vex::Name]
VxlanController::Cli::HostFloodTableList, entity ()
  130 hostFloodTable : shared entity collection, VxlanController::Cli::HostFloodTable[Vex::Name]
VxlanController::Cli::SwitchMap, entity (switchId, vtepAddr)
  130 switchId : constructor argument, Vex::String
  131 vtepAddr : constructor argument, Nolt::IpGenAddr
VxlanController::Cli::VcsVniAdvertised, entity (vniStatusDir, nonSwitchAggregate, nonSwitchHostFloodTables, vniDotted, vniFilter, macFilter, destFilter, vtepFilter)
  130 vniStatusDir : entity pointer, Vex::Dir
  131 nonSwitchAggregate : entity pointer, VxlanController::Cli::VniStatusDirList
  132 nonSwitchHostFloodTables : entity pointer, VxlanController::Cli::HostFloodTableList
  133 vniDotted : constructor argument, bool
  134 vniFilter : constructor argument, Vxlan::VniOrNone
  135 macFilter : constructor argument, Nolt::EthAddr
  136 destFilter : constructor argument, Vex::String
  137 vtepFilter : entity pointer, VxlanController::Cli::VtepList
  138 vniDir : owned entity, VxlanController::Cli::VniStatusList
  139 initialize : method, ()
  140 copyDest : method, (destName : Vex::Name)
  141 copyTable : method, (tableName : Vex::Name)
  142 render : method, (fd : U32, fmt : U32, revision : U32)
VxlanController::Cli::VxlanVtepSet, entity ()
  130 vtep : owned entity collection, VxlanController::Cli::VxlanVtep[Vex::String]
VxlanController::Cli::LRMapBase, entity (switchPublishStatus, switchInfoDir)
  130 switchPublishStatus : entity pointer, Statestore::PublishStatus
  131 switchInfoDir : entity pointer, VxlanController::SwitchInfoDir
  132 pathPrefix : constant, Vex::String
  133 switchMap : owned entity collection, VxlanController::Cli::SwitchMap[Vex::String]
  134 lRMap : owned entity collection, VxlanController::Cli::LRMap[Vex::String]
  135 buildLRMap : method, (lRNameFilter : Vex::String, switchFilter : Vex::String, vtepFilter : shared VxlanController::Cli::VtepList)
VxlanController::Cli::LRRouteByName, entity (lRName)
  130 lRName : constructor argument, Vex::String
  131 lRRoute : owned entity collection, VxlanController::Cli::LRRoute[Nolt::IpGenPrefix]
VxlanController::Cli::LRMap, entity (lRName)
  130 lRName : constructor argument, Vex::String
  131 switchList : shared entity collection, VxlanController::Cli::SwitchMap[Vex::String]
VxlanController::Cli::MacVtepMultiPath, value (macAddr)
  2 macAddr : constructor argument, Nolt::EthAddr
  3 vtepIpList : set, bool[Nolt::IpAddr]
VxlanController::Cli::LRDetail, entity (lRName)
  130 lRName : constructor argument, Vex::String
  131 ipPort : value collection, VxlanController::LRIpPortV2[Nolt::IpGenAddrWithMask]
  132 ipUplinkPort : value collection, VxlanController::Cli::LRIpUplinkPortAddress[Nolt::IpGenAddrWithMask]
VxlanController::Cli::VxlanVtep, entity (switchId)
  130 switchId : constructor argument, Vex::String
  131 arpTable : owned entity collection, VxlanController::Cli::VxlanArpTable[Vex::String]
VxlanController::Cli::VniStatusList, entity ()
  130 vniEntry : owned entity collection, VxlanController::Cli::VniStatus[Vxlan::Vni]
VxlanController::Cli::ArpReceived, entity (switches, vniDotted, vniFilter, macFilter, ipFilter, switchFilter)
  130 switches : entity pointer, Vex::Dir
  131 vniDotted : constructor argument, bool
  132 vniFilter : constructor argument, Vxlan::VniOrNone
  133 macFilter : constructor argument, Nolt::EthAddr
  134 ipFilter : constructor argument, Nolt::IpGenAddr
  135 switchFilter : constructor argument, Vex::String
  136 render : method, (fd : U32, fmt : U32, revision : U32)
VxlanController::Cli::MacVtepFloodList, entity (macAddr)
  130 macAddr : constructor argument, Nolt::EthAddr
  131 vtepIpFloodList : set, bool[Nolt::IpAddr]
VxlanController::Cli::VxlanArpEntry, entity (ipAddress, macAddress, preference, changes)
  130 ipAddress : constructor argument, Nolt::IpGenAddr
  131 macAddress : constructor argument, Nolt::EthAddr
  132 preference : constructor argument, U8
  133 changes : constructor argument, U32
VxlanController::Cli::LRIpUplinkPortAddress, value (ip)
  2 ip : constructor argument, Nolt::IpGenAddrWithMask
  3 vlanId : plain, Bridging::VlanIdOrNone
  4 mac : plain, Nolt::EthAddr
  5 port : set, bool[Vex::String]
  6 switchId : plain, Vex::String
  7 vtep : plain, Nolt::IpGenAddr
VxlanController::Cli::LRRoute, entity (prefix)
  130 prefix : constructor argument, Nolt::IpGenPrefix
  131 nexthop : set, bool[Nolt::IpGenAddr]
VxlanController::Cli::VcsLR, entity, base VxlanController::Cli::LRMapBase (switchPublishStatus, switchInfoDir, lRStatusDir, vniDotted, lRNameFilter)
  258 lRStatusDir : entity pointer, Vex::Dir
  259 vniDotted : constructor argument, bool
  260 lRNameFilter : constructor argument, Vex::String
  261 lRDetail : owned entity collection, VxlanController::Cli::LRDetail[Vex::String]
  262 initialize : method, ()
  263 render : method, (fd : U32, fmt : U32, revision : U32)
VxlanController::Cli::VxlanArpTable, entity (vni)
  130 vni : constructor argument, Vex::String
  131 arpEntry : owned entity collection, VxlanController::Cli::VxlanArpEntry[Nolt::IpGenAddr]
VxlanController::Cli::Switch, entity (switchId)
  130 switchId : constructor argument, Vex::Name
  131 vniStatusList : owned entity, VxlanController::Cli::VniStatusList
VxlanController::Cli::VcsLRRoute, entity (lRStatusDir, lRNameFilter, prefixFilter)
  130 lRStatusDir : entity pointer, Vex::Dir
  131 lRNameFilter : constructor argument, Vex::String
  132 prefixFilter : constructor argument, Nolt::IpGenPrefix
  133 lRRouteByName : owned entity collection, VxlanController::Cli::LRRouteByName[Vex::String]
  134 initialize : method, ()
  135 render : method, (fd : U32, fmt : U32, revision : U32)
VxlanController::Cli::MacVtep, value (macAddr, vtepIp, moveCount)
  2 macAddr : constructor argument, Nolt::EthAddr
  3 vtepIp : constructor argument, Nolt::IpAddr
  4 moveCount : plain, Quay::Seqno32
VxlanController::Cli::VcsVniReceived, entity (switchAggregate, nonSwitchAggregate, nonSwitchHostFloodTables, vniDotted, vniFilter, macFilter, switchFilter, vtepFilter)
  130 switchAggregate : entity pointer, Vex::Dir
  131 nonSwitchAggregate : entity pointer, VxlanController::Cli::VniStatusDirList
  132 nonSwitchHostFloodTables : entity pointer, VxlanController::Cli::HostFloodTableList
  133 vniDotted : constructor argument, bool
  134 vniFilter : constructor argument, Vxlan::VniOrNone
  135 macFilter : constructor argument, Nolt::EthAddr
  136 switchFilter : constructor argument, Vex::String
  137 vtepFilter : entity pointer, VxlanController::Cli::VtepList
  138 switchDir : owned entity, VxlanController::Cli::SwitchDir
  139 nonSwitchSourceDir : owned entity, VxlanController::Cli::SwitchDir
  140 initialize : method, ()
  141 copySwitch : method, (switchId : Vex::Name)
  142 copyTable : method, (tableName : Vex::Name)
  143 render : method, (fd : U32, fmt : U32, revision : U32)
VxlanController::Cli::VniStatus, entity (vni)
  130 vni : constructor argument, Vxlan::Vni
  131 macAddress : plain, Nolt::EthAddr
  132 macVtepTable : value collection, VxlanController::Cli::MacVtep[Nolt::EthAddr]
  133 macVtepMultiPathTable : value collection, VxlanController::Cli::MacVtepMultiPath[Nolt::EthAddr]
  134 macVtepFloodListTable : owned entity collection, VxlanController::Cli::MacVtepFloodList[Nolt::EthAddr]
)";

} // namespace

TEST(Reflection, ListsTypesAndAttributesInTheOrderOfRegistration) {
    std::string const table = wholeTable();
    EXPECT_EQ(table, expectedTypes);
}

TEST(Reflection, NamesTheTypesOfTheModelSoThatTheTableHasThem) {
    std::size_t ofModel = 0;
    for (auto const * type : Vex::typeTable()) {
        for (auto const & attribute : type->attributes) {
            bool const isOfModel = attribute.type.starts_with("VxlanController::Cli::");
            EXPECT_EQ(Vex::typeNode(attribute.type) != nullptr, isOfModel)
                << type->name << " " << attribute.name << ": " << attribute.type;
            ofModel += isOfModel ? 1 : 0;
        }
    }
    EXPECT_EQ(ofModel, 28U);
}

TEST(Reflection, CarriesTheDocumentationOfTheModelFile) {
    auto const * type = Vex::typeNode("VxlanController::Cli::VtepList");
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(type->doc, "The VTEPs to which a listing is limited. No entry means no limit.");
    EXPECT_EQ(type->attribute("vtep")->doc, "Only ever looked up, never printed.");
}
