#include "state/VtepKeyPairs.h"

#include <gtest/gtest.h>

#include <set>

using Nolt::IpAddr;
using VxlanController::IpVtepKeyPair;
using VxlanController::SwitchIdVtepKeyPair;

TEST(VtepKeyPairs, AVtepIsIdentifiedByAddressAndInterface) {
    IpVtepKeyPair const key{IpAddr(1), "Vxlan1"};
    EXPECT_EQ(key, (IpVtepKeyPair{IpAddr(1), "Vxlan1"}));
    EXPECT_NE(key, (IpVtepKeyPair{IpAddr(2), "Vxlan1"}));
    EXPECT_NE(key, (IpVtepKeyPair{IpAddr(1), ""}));
    EXPECT_LT(key, (IpVtepKeyPair{IpAddr(2), ""}));
    EXPECT_LT(key, (IpVtepKeyPair{IpAddr(1), "Vxlan2"}));
}

TEST(VtepKeyPairs, ASwitchIsIdentifiedByIdentifierAndInterface) {
    SwitchIdVtepKeyPair const key{"leaf1", "Vxlan1"};
    EXPECT_EQ(key, (SwitchIdVtepKeyPair{"leaf1", "Vxlan1"}));
    EXPECT_NE(key, (SwitchIdVtepKeyPair{"leaf2", "Vxlan1"}));
    EXPECT_NE(key, (SwitchIdVtepKeyPair{"leaf1", ""}));
    EXPECT_LT(key, (SwitchIdVtepKeyPair{"leaf2", ""}));
    EXPECT_LT(key, (SwitchIdVtepKeyPair{"leaf1", "Vxlan2"}));
}

TEST(VtepKeyPairs, EqualKeysHashAlikeAndOthersDifferently) {
    std::hash<IpVtepKeyPair> const ofVtep;
    std::hash<SwitchIdVtepKeyPair> const ofSwitch;
    std::set<std::size_t> hashes;
    for (Vex::U32 i = 0; i < 100; ++i) {
        for (char const * interface : {"", "Vxlan1", "Vxlan2"}) {
            EXPECT_EQ(ofVtep({IpAddr(i), interface}), ofVtep({IpAddr(i), interface}));
            hashes.insert(ofVtep({IpAddr(i), interface}));
            hashes.insert(ofSwitch({Vex::String("leaf" + std::to_string(i)), interface}));
        }
    }
    EXPECT_EQ(hashes.size(), 600U);
}

TEST(VtepKeyPairs, SwappingTheTwoTextsOfAKeyChangesIt) {
    std::hash<SwitchIdVtepKeyPair> const hash;
    EXPECT_NE(hash({"a", "b"}), hash({"b", "a"}));
}

TEST(VtepKeyPairs, SimilarKeysDifferInTheTopBitsOfTheirHashes) {
    std::set<std::size_t> tops;
    for (Vex::U32 i = 0; i < 256; ++i) {
        tops.insert(std::hash<IpVtepKeyPair>()({IpAddr(i), "Vxlan1"}) >> 56);
    }
    // 256 random choices of 256 slots fill about 162 of them.
    EXPECT_GT(tops.size(), 120U);
}
