#include "vxshow/sources/Facts.h"

#include "vxshow/sources/Findings.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;

namespace {

Vxlan::Vni const vni10(10);
auto const mac1 = Nolt::EthAddr::ofValue(1);
auto const mac2 = Nolt::EthAddr::ofValue(2);
Nolt::IpAddr const vtep1(1);
Nolt::IpAddr const vtep2(2);

} // namespace

TEST(Facts, ASettledSideHasEachFactOnceInOneOrder) {
    SideFacts side;
    side.macs = {{vni10, mac2, vtep1},
                 {vni10, mac1, vtep2},
                 {vni10, mac1, vtep1},
                 {Vxlan::Vni(9), mac2, vtep1},
                 {vni10, mac1, vtep2}};
    side.floods = {{vni10, {}, vtep2}, {vni10, {}, vtep1}, {vni10, {}, vtep2}};
    side.settle();
    EXPECT_EQ(side.macs, (std::vector<MacPlace>{{Vxlan::Vni(9), mac2, vtep1},
                                                {vni10, mac1, vtep1},
                                                {vni10, mac1, vtep2},
                                                {vni10, mac2, vtep1}}));
    EXPECT_EQ(side.floods, (std::vector<FloodTarget>{{vni10, {}, vtep1}, {vni10, {}, vtep2}}));
    EXPECT_EQ(side.vnis, (std::vector{Vxlan::Vni(9), vni10}));
}

TEST(Facts, OfPlacesThatDifferOnlyInMovesTheOneWithTheMostStays) {
    SideFacts side;
    side.macs = {{vni10, mac1, vtep1, 2}, {vni10, mac1, vtep1, 7}, {vni10, mac1, vtep1, 0}};
    side.settle();
    EXPECT_EQ(side.macs, (std::vector<MacPlace>{{vni10, mac1, vtep1, 7}}));
}

TEST(Facts, BindingsAreInOrderOfPrecedence) {
    Nolt::IpGenAddr const ip(vtep1);
    SideFacts side;
    side.bindings = {{vni10, ip, mac2, 1, 1},
                     {vni10, ip, mac1, 1, 1},
                     {vni10, ip, mac2, 1, 2},
                     {vni10, ip, mac2, 2, 0}};
    side.settle();
    EXPECT_EQ(side.bindings, (std::vector<IpBinding>{{vni10, ip, mac2, 2, 0},
                                                     {vni10, ip, mac2, 1, 2},
                                                     {vni10, ip, mac1, 1, 1},
                                                     {vni10, ip, mac2, 1, 1}}));
}

TEST(Facts, AVniWithoutFactsIsKept) {
    SideFacts side;
    side.vnis = {vni10, Vxlan::Vni(3), vni10};
    side.settle();
    EXPECT_EQ(side.vnis, (std::vector{Vxlan::Vni(3), vni10}));
}

TEST(Facts, MergedSidesAreSettledTogether) {
    Vxlan::Vni const vni9(9);
    Nolt::IpGenAddr const ip(vtep1);
    std::vector<SideFacts> parts(5);
    parts[0].macs = {{vni10, mac1, vtep1, 2}, {vni10, mac2, vtep1}};
    parts[0].bindings = {{vni10, ip, mac1, 1, 1}};
    parts[1].macs = {{vni9, mac1, vtep2}, {vni10, mac1, vtep1, 7}, {vni10, mac1, vtep2}};
    parts[1].floods = {{vni9, {}, vtep2}, {vni10, {}, vtep1}};
    parts[2].vnis = {Vxlan::Vni(3)};
    parts[2].bindings = {{vni10, ip, mac2, 2, 0}};
    parts[4].macs = {{vni10, mac1, vtep1, 5}};
    parts[4].floods = {{vni9, {}, vtep1}, {vni10, {}, vtep1}};
    SideFacts together;
    std::vector<SideFacts const *> pointers;
    for (SideFacts & part : parts) {
        together.macs.insert(together.macs.end(), part.macs.begin(), part.macs.end());
        together.floods.insert(together.floods.end(), part.floods.begin(), part.floods.end());
        together.bindings.insert(together.bindings.end(), part.bindings.begin(),
                                 part.bindings.end());
        together.vnis.insert(together.vnis.end(), part.vnis.begin(), part.vnis.end());
        part.settle();
        pointers.push_back(&part);
    }
    together.settle();
    DeadlineWatch watch(Deadline::never());
    EXPECT_EQ(merged(pointers, watch), together);
    EXPECT_EQ(together.macs.size(), 4U);
    EXPECT_EQ(merged({}, watch), SideFacts());
}

} // namespace vxshow::test
