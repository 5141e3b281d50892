#include "vxshow/sources/frr/Question.h"

#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;
using namespace sources::frr;

namespace {

using Commands = std::vector<std::string>;

Commands commands(state::Selection const & selection) {
    Commands all;
    for (auto const & question : firstQuestions(selection)) {
        all.push_back(question.command());
    }
    return all;
}

/// A listing of MAC addresses.
state::Selection macs() {
    state::Selection selection;
    selection.routers = false;
    selection.arpTables = false;
    return selection;
}

} // namespace

TEST(Question, EverythingTakesSixQuestions) {
    EXPECT_EQ(commands({}),
              (Commands{"show evpn vni detail json", "show evpn mac vni all json",
                        "show evpn es detail json", "show evpn arp-cache vni all json",
                        "show vrf vni json", "show interface vrf all brief json"}));
}

TEST(Question, AMacListingAsksOnlyForMacsSegmentsAndDevices) {
    EXPECT_EQ(commands(macs()),
              (Commands{"show evpn vni detail json", "show evpn mac vni all json",
                        "show evpn es detail json", "show interface vrf all brief json"}));
}

TEST(Question, WhatASwitchWasToldDoesNotDependOnItsDevices) {
    auto selection = macs();
    selection.received = false;
    EXPECT_EQ(commands(selection),
              (Commands{"show evpn vni detail json", "show evpn mac vni all json",
                        "show evpn es detail json"}));
    selection = macs();
    selection.advertised = false;
    EXPECT_EQ(firstQuestions(selection, state::Role::hsc).back().command(),
              "show evpn es detail json");
}

TEST(Question, AnArpListingAsksForNoMacs) {
    state::Selection selection;
    selection.routers = false;
    selection.macTables = false;
    EXPECT_EQ(commands(selection),
              (Commands{"show evpn vni detail json", "show evpn arp-cache vni all json"}));
}

TEST(Question, ARouterListingAsksForNoTables) {
    state::Selection selection;
    selection.received = false;
    selection.advertised = false;
    EXPECT_EQ(commands(selection), (Commands{"show evpn vni detail json", "show vrf vni json"}));
}

TEST(Question, OneVniIsAskedForByItself) {
    auto selection = macs();
    selection.arpTables = true;
    selection.vni = Vxlan::Vni(4098);
    EXPECT_EQ(commands(selection),
              (Commands{"show evpn json", "show evpn vni 4098 json", "show evpn mac vni 4098 json",
                        "show evpn es detail json", "show evpn arp-cache vni 4098 json",
                        "show interface vrf all brief json"}));
}

TEST(Question, OneMacAddressInOneVniIsAskedForByItself) {
    auto selection = macs();
    selection.vni = Vxlan::Vni(4098);
    selection.mac = Nolt::EthAddr::fromString("0240.9800.e501");
    EXPECT_EQ(commands(selection),
              (Commands{"show evpn json", "show evpn vni 4098 json",
                        "show evpn mac vni 4098 mac 02:40:98:00:e5:01 json",
                        "show evpn es detail json", "show interface vrf all brief json"}));
}

TEST(Question, RoutersNeedEveryVni) {
    state::Selection selection;
    selection.vni = Vxlan::Vni(10);
    EXPECT_EQ(commands(selection).front(), "show evpn vni detail json");
}

TEST(Question, VniZeroIsNotAskedFor) {
    state::Selection selection;
    selection.routers = false;
    selection.vni = Vxlan::Vni(0);
    EXPECT_EQ(commands(selection),
              (Commands{"show evpn vni detail json", "show interface vrf all brief json"}));
}

TEST(Question, AnAbbreviationOfAllIsNotAVrfWord) {
    for (auto const * const name : {"a", "al", "all"}) {
        EXPECT_FALSE(isVrfWord(name)) << name;
    }
    for (auto const * const name : {"A", "alL", "alle", "l", "ll", "b"}) {
        EXPECT_TRUE(isVrfWord(name)) << name;
    }
}

TEST(Question, ANameThatIsNotAWordIsNotAVrfWord) {
    for (auto const * const name : {"tenant-1_a.b:C", "a;b", "'", "a?", "$(x)", "#", "!", "\\"}) {
        EXPECT_TRUE(isVrfWord(name)) << name;
    }
    for (auto const * const name : {"", "a b", "a\nb", "a|b", "\xc3\xa9", "a\x7f", "\x1b"}) {
        EXPECT_FALSE(isVrfWord(name)) << name;
    }
}

} // namespace vxshow::test
