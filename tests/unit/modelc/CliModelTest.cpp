#include "modelc/check/Checker.h"
#include "modelc/output/Files.h"
#include "modelc/syntax/Parser.h"

#include <gtest/gtest.h>

#include <map>

namespace modelc {

namespace {

/// The real model of the show commands.
class CliModel : public ::testing::Test {
protected:
    void SetUp() override {
        Problems problems;
        model_ = check(parse(readFile(CLI_MODEL_FILE)), problems);
        ASSERT_EQ(problems.report("model"), "");
    }

    template <class Condition>
    std::string names(Condition condition) const {
        std::string text;
        for (auto const & type : model_.types) {
            text += condition(type) ? type.name + " " : "";
        }
        return text;
    }

    /// "NUMBER NAME" for each attribute of the type, in number order.
    std::string numbered(std::string const & name) const {
        std::map<unsigned, std::string> attributes;
        for (auto const & type : model_.types) {
            if (type.name == name) {
                for (auto const & attribute : type.attributes) {
                    attributes[attribute.number] = attribute.name;
                }
            }
        }
        std::string text;
        for (auto const & [number, attribute] : attributes) {
            text += std::to_string(number) + " " + attribute + " ";
        }
        return text;
    }

    Model model_;
};

} // namespace

TEST_F(CliModel, HasThirtyTypesOfWhichThreeAreValues) {
    EXPECT_EQ(model_.space, "VxlanController::Cli");
    EXPECT_EQ(model_.types.size(), 30U);
    EXPECT_EQ(names([](Type const & type) { return !type.entity; }),
              "MacVtep MacVtepMultiPath LRIpUplinkPortAddress ");
    EXPECT_EQ(names([](Type const & type) { return type.base != nullptr; }), "VcsLR VcsLRMap ");
}

TEST_F(CliModel, HasFourteenFactoriesAndFourCreators) {
    EXPECT_EQ(names([](Type const & type) { return type.factory; }),
              "MacVtepFloodList VtepList VniStatusDirList HostFloodTable HostFloodTableList "
              "VcsVniReceived VcsVniAdvertised VxlanFdbSet VxlanVtepSet ArpAdvertised ArpReceived "
              "VcsLR VcsLRMap VcsLRRoute ");
    EXPECT_EQ(names([](Type const & type) { return type.creator; }),
              "MacVtepFloodList VniStatusList SwitchDir VxlanArpTable ");
}

TEST_F(CliModel, RegistersTypesInTheOrderThatToolsRelyOn) {
    std::string order;
    for (auto const * type : model_.registration) {
        order += type->name + " ";
    }
    EXPECT_EQ(order, "HostFloodTable VcsLRMap SwitchDir VxlanFdbSet ArpAdvertised VtepList "
                     "VniStatusDirList HostFloodTableList SwitchMap VcsVniAdvertised VxlanVtepSet "
                     "LRMapBase LRRouteByName LRMap MacVtepMultiPath LRDetail VxlanVtep "
                     "VniStatusList ArpReceived MacVtepFloodList VxlanArpEntry "
                     "LRIpUplinkPortAddress LRRoute VcsLR VxlanArpTable Switch VcsLRRoute MacVtep "
                     "VcsVniReceived VniStatus ");
}

TEST_F(CliModel, NumbersAttributesAsToolsExpect) {
    EXPECT_EQ(numbered("MacVtep"), "2 macAddr 3 vtepIp 4 moveCount ");
    EXPECT_EQ(numbered("LRIpUplinkPortAddress"), "2 ip 3 vlanId 4 mac 5 port 6 switchId 7 vtep ");
    EXPECT_EQ(numbered("VniStatus"),
              "130 vni 131 macAddress 132 macVtepTable 133 macVtepMultiPathTable "
              "134 macVtepFloodListTable ");
    EXPECT_EQ(numbered("VcsVniReceived"),
              "130 switchAggregate 131 nonSwitchAggregate 132 nonSwitchHostFloodTables "
              "133 vniDotted 134 vniFilter 135 macFilter 136 switchFilter 137 vtepFilter "
              "138 switchDir 139 nonSwitchSourceDir 140 initialize 141 copySwitch 142 copyTable "
              "143 render ");
    EXPECT_EQ(numbered("LRMapBase"), "130 switchPublishStatus 131 switchInfoDir 132 pathPrefix "
                                     "133 switchMap 134 lRMap 135 buildLRMap ");
    EXPECT_EQ(numbered("VcsLR"), "258 lRStatusDir 259 vniDotted 260 lRNameFilter 261 lRDetail "
                                 "262 initialize 263 render ");
}

} // namespace modelc
