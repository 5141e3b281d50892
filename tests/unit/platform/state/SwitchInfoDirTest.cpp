#include "state/SwitchInfoDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using Nolt::IpGenAddr;
using namespace VxlanController;

namespace {

IpGenAddr address(char const * text) {
    return IpGenAddr::fromString(text);
}

/// The addresses of a switch's VTEPs in iteration order.
std::string walked(SwitchInfo const & info) {
    std::string text;
    for (VtepMap const & vtep : info.vtepMap()) {
        text += vtep.address().stringValue() + " ";
    }
    return text;
}

} // namespace

TEST(SwitchInfoDir, FindsASwitchByItsExactIdentifier) {
    auto const directory = Vex::makePtr<SwitchInfoDir>();
    auto const leaf = directory->switchInfoIs("0a:00:00:00:00:01");
    EXPECT_EQ(leaf->switchId(), "0a:00:00:00:00:01");
    EXPECT_EQ(directory->switchInfo("0a:00:00:00:00:01"), leaf);
    EXPECT_EQ(directory->switchInfo("0A:00:00:00:00:01"), nullptr);
    EXPECT_EQ(directory->switchInfo("0a-00-00-00-00-01"), nullptr);
    EXPECT_EQ(directory->switchInfo(""), nullptr);
    EXPECT_EQ(directory->switchInfo().size(), 1U);
}

TEST(SwitchInfoDir, FindsAVtepByItsAddress) {
    auto const directory = Vex::makePtr<SwitchInfoDir>();
    auto const vtep = directory->vtepMapIs(address("10.0.0.1"));
    EXPECT_EQ(directory->vtepMap(address("10.0.0.1")), vtep);
    EXPECT_EQ(directory->vtepMap(address("10.0.0.2")), nullptr);
    EXPECT_EQ(directory->vtepMap(address("::ffff:10.0.0.1")), nullptr);
}

TEST(SwitchInfoDir, CreatesASwitchAndAVtepOnce) {
    auto const directory = Vex::makePtr<SwitchInfoDir>();
    auto const leaf = directory->switchInfoIs("leaf1");
    auto const vtep = directory->vtepMapIs(address("10.0.0.1"));
    vtep->activeIs(true);
    EXPECT_EQ(directory->switchInfoIs("leaf1"), leaf);
    EXPECT_EQ(directory->vtepMapIs(address("10.0.0.1")), vtep);
    EXPECT_TRUE(vtep->active());
}

TEST(SwitchInfoDir, AVtepIsInitiallyNotInService) {
    auto const vtep = Vex::makePtr<VtepMap>(address("10.0.0.1"));
    EXPECT_FALSE(vtep->active());
    vtep->activeIs(true);
    EXPECT_TRUE(vtep->active());
    vtep->activeIs(false);
    EXPECT_FALSE(vtep->active());
}

TEST(SwitchInfoDir, ASwitchOfAVtepIsKeyedBySwitchAndInterface) {
    auto const vtep = Vex::makePtr<VtepMap>(address("10.0.0.1"));
    vtep->switchIdIs({"leaf1", "Vxlan1"});
    vtep->switchIdIs({"leaf1", "Vxlan1"});
    EXPECT_EQ(vtep->switchId().size(), 1U);
    vtep->switchIdIs({"leaf1", "Vxlan2"});
    vtep->switchIdIs({"leaf2", "Vxlan1"});
    EXPECT_EQ(vtep->switchId().size(), 3U);
    EXPECT_TRUE(vtep->switchId().has({"leaf1", "Vxlan2"}));
    EXPECT_FALSE(vtep->switchId().has({"leaf2", "Vxlan2"}));
}

TEST(SwitchInfoDir, AKeyOfASwitchHoldsTheLastVtepStored) {
    auto const leaf = Vex::makePtr<SwitchInfo>("leaf1");
    auto const first = Vex::makePtr<VtepMap>(address("10.0.0.1"));
    auto const second = Vex::makePtr<VtepMap>(address("10.0.0.1"));
    leaf->vtepMapIs({first->address(), ""}, first);
    leaf->vtepMapIs({first->address(), ""}, second);
    EXPECT_EQ(leaf->vtepMap().size(), 1U);
    EXPECT_EQ(leaf->vtepMap().find({first->address(), ""})->element(), second);
    leaf->vtepMapIs({first->address(), "Vxlan1"}, first);
    EXPECT_EQ(leaf->vtepMap().size(), 2U);
}

TEST(SwitchInfoDir, TheOrderOfASwitchsVtepsDependsOnlyOnTheContent) {
    std::vector<IpVtepKeyPair> keys;
    for (Vex::U32 i = 0; i < 40; ++i) {
        keys.push_back({Nolt::IpAddr(0x0A000000 + i / 2), i % 2 == 0 ? "Vxlan1" : "Vxlan2"});
    }
    auto const fill = [&] {
        auto leaf = Vex::makePtr<SwitchInfo>("leaf1");
        for (IpVtepKeyPair const & key : keys) {
            leaf->vtepMapIs(key, Vex::makePtr<VtepMap>(key.ip));
        }
        return leaf;
    };
    std::string const expected = walked(*fill());
    EXPECT_EQ(std::count(expected.begin(), expected.end(), ' '), 40);
    std::reverse(keys.begin(), keys.end());
    EXPECT_EQ(walked(*fill()), expected);
    std::rotate(keys.begin(), keys.begin() + 17, keys.end());
    EXPECT_EQ(walked(*fill()), expected);
}

TEST(SwitchInfoDir, ItsTypesAreTrackedUnderTheirNames) {
    auto const before = Vex::allocTrackLiveCount("VxlanController::");
    {
        auto const directory = Vex::makePtr<SwitchInfoDir>();
        directory->switchInfoIs("leaf1")->vtepMapIs({address("10.0.0.1"), ""},
                                                    directory->vtepMapIs(address("10.0.0.1")));
        EXPECT_EQ(Vex::allocTrackLiveCount("VxlanController::"), before + 3);
    }
    EXPECT_EQ(Vex::allocTrackLiveCount("VxlanController::"), before);
}
