#include "vxshow/sources/Merge.h"

#include "state/VniFdbStatusV2.h"
#include "state/VniStatusDirV2.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/vxshow/state/snapshot/Snapshots.h"
#include "vxshow/sources/Failure.h"

#include <chrono>
#include <gtest/gtest.h>

namespace vxshow::test {

using namespace sources;

namespace {

namespace Cli = VxlanController::Cli;

Vxlan::Vni const mergedVni(10);
auto const mergedMac1 = Nolt::EthAddr::fromString("02:00:00:00:00:01");
auto const mergedMac2 = Nolt::EthAddr::fromString("02:00:00:00:00:02");

Nolt::IpAddr vtep(unsigned number) {
    return Nolt::IpAddr(0x0A000000 + number);
}

SideFacts sideWith(std::vector<MacPlace> macs) {
    SideFacts side;
    side.macs = std::move(macs);
    return side;
}

Facts learned(std::string const & name, std::vector<MacPlace> macs) {
    Facts state;
    state.local[name] = sideWith(std::move(macs));
    return state;
}

Facts told(std::vector<MacPlace> macs) {
    Facts state;
    state.remote = sideWith(std::move(macs));
    return state;
}

state::Mount mountOf(std::vector<Facts> states, Role role = Role::switches) {
    Merge mount;
    for (auto & state : states) {
        state.settle();
        mount.add(state, role);
    }
    return mount.mount();
}

std::vector<Nolt::IpAddr> pathsOf(VxlanController::VniTables const & tables,
                                  Nolt::EthAddr const & mac) {
    std::vector<Nolt::IpAddr> paths;
    for (Nolt::IpAddr const path : tables.macVtepMultiPathTable(mac).vtepIp()) {
        paths.push_back(path);
    }
    return paths;
}

} // namespace

TEST(Merge, WithoutSourcesTheMountIsEmpty) {
    auto const mount = mountOf({});
    EXPECT_FALSE(mount.received.switches);
    EXPECT_FALSE(mount.received.sources);
    EXPECT_FALSE(mount.received.evpn);
    EXPECT_FALSE(mount.advertised.vnis);
    EXPECT_FALSE(mount.routers.switchInfoDir);
}

TEST(Merge, AMacThatSwitchesPlaceDifferentlyIsShownUnderEach) {
    auto const mount = mountOf({learned("leaf1", {{mergedVni, mergedMac1, vtep(1), 4}}),
                                learned("leaf2", {{mergedVni, mergedMac1, vtep(2), 5}})});
    EXPECT_EQ(switchOf(mount, "leaf1")->vniStatusV2(mergedVni)->macVtepTable(mergedMac1),
              VxlanController::MacVtepV2(mergedMac1, vtep(1), 4));
    EXPECT_EQ(switchOf(mount, "leaf2")->vniStatusV2(mergedVni)->macVtepTable(mergedMac1),
              VxlanController::MacVtepV2(mergedMac1, vtep(2), 5));
}

TEST(Merge, AMacThatIsAdvertisedDifferentlyHasEveryVtep) {
    auto const mount =
        mountOf({told({{mergedVni, mergedMac1, vtep(2)}, {mergedVni, mergedMac2, vtep(2)}}),
                 told({{mergedVni, mergedMac1, vtep(1)}, {mergedVni, mergedMac2, vtep(2), 3}})});
    auto const entry = entryOf(mount, "10");
    ASSERT_TRUE(entry);
    EXPECT_EQ(pathsOf(*entry, mergedMac1), (std::vector{vtep(1), vtep(2)}));
    EXPECT_EQ(entry->macVtepTable(mergedMac1), VxlanController::MacVtepV2());
    EXPECT_EQ(entry->macVtepTable(mergedMac2), VxlanController::MacVtepV2(mergedMac2, vtep(2), 3));
}

TEST(Merge, TheListingOfASwitchDoesNotDependOnOtherSources) {
    auto const one =
        learned("leaf1", {{mergedVni, mergedMac1, vtep(1), 4}, {mergedVni, mergedMac2, vtep(1)}});
    auto const listing = [](state::Mount const & mount) {
        auto const & state = mount.received;
        return rendered(Cli::vcsVniReceivedFactory(state.switches, state.sources, state.evpn, false,
                                                   {}, {}, "leaf1", Cli::vtepListFactory()));
    };
    auto const alone = listing(mountOf({one}));
    EXPECT_NE(alone.find("0200.0000.0001"), std::string::npos);
    auto const other = learned("leaf2", {{mergedVni, mergedMac1, vtep(2)}});
    EXPECT_EQ(listing(mountOf({one, other})), alone);
    EXPECT_EQ(listing(mountOf({other, one})), alone);
}

TEST(Merge, FloodListsOfSeveralSourcesAreMerged) {
    Facts one;
    one.remote.floods = {{mergedVni, {}, vtep(1)}, {mergedVni, mergedMac1, vtep(3)}};
    Facts other;
    other.remote.floods = {{mergedVni, {}, vtep(2)}, {mergedVni, {}, vtep(1)}};
    auto const entry = entryOf(mountOf({one, other}), "10");
    EXPECT_EQ(entry->macVtepFloodListTable({})->vtepIp().size(), 2);
    EXPECT_EQ(entry->macVtepFloodListTable(mergedMac1)->vtepIp().size(), 1);
}

TEST(Merge, AnIpAddressHasTheMacAddressThatTakesPrecedence) {
    Nolt::IpGenAddr const ip(vtep(9));
    Facts state;
    state.remote.bindings = {{mergedVni, ip, mergedMac1, 1, 9}, {mergedVni, ip, mergedMac2, 2, 0}};
    auto const entry = entryOf(mountOf({state}), "10");
    EXPECT_EQ(entry->arpTable().find(ip)->element().macAddress(), mergedMac2);
}

TEST(Merge, WhatASourceThatIsNoSwitchWasToldIsReceivedFromIt) {
    auto state = learned("leaf1", {{mergedVni, mergedMac1, vtep(1)}});
    state.remote = sideWith({{mergedVni, mergedMac2, vtep(2)}});
    auto const mount = mountOf({state}, Role::hsc);
    EXPECT_FALSE(mount.received.switches);
    auto const received = mount.received.sources->vniStatusDir("HSC")->vniStatusV2(mergedVni);
    EXPECT_EQ(received->macVtepTable(mergedMac2).vtepIp(), vtep(2));
    EXPECT_EQ(received->macVtepTable().size(), 1);
    auto const advertised = mount.advertised.sources->vniStatusDir("HSC")->vniStatusV2(mergedVni);
    EXPECT_EQ(advertised->macVtepTable(mergedMac1).vtepIp(), vtep(1));
}

TEST(Merge, HscAndQvxAreInTheSameLists) {
    auto hsc = learned("leaf1", {{mergedVni, mergedMac1, vtep(1)}});
    hsc.remote = sideWith({{mergedVni, mergedMac1, vtep(2)}});
    auto qvx = learned("leaf1", {{mergedVni, mergedMac1, vtep(3)}});
    qvx.remote = sideWith({{mergedVni, mergedMac1, vtep(4)}});
    hsc.settle();
    qvx.settle();
    Merge all;
    all.add(hsc, Role::hsc);
    all.add(qvx, Role::qvx);
    auto const mount = all.mount();
    auto const vtepOf = [](auto const & sources, char const * name) {
        return sources->vniStatusDir(name)
            ->vniStatusV2(mergedVni)
            ->macVtepTable(mergedMac1)
            .vtepIp();
    };
    EXPECT_EQ(vtepOf(mount.advertised.sources, "HSC"), vtep(1));
    EXPECT_EQ(vtepOf(mount.received.sources, "HSC"), vtep(2));
    EXPECT_FALSE(mount.advertised.sources->vniStatusDir("QVX"));
    EXPECT_EQ(vtepOf(mount.received.sources, "QVX"), vtep(4));
}

TEST(Merge, QvxAloneMountsNoHsc) {
    auto const mount = mountOf({told({{mergedVni, mergedMac1, vtep(1)}})}, Role::qvx);
    EXPECT_FALSE(mount.received.switches);
    EXPECT_FALSE(mount.received.evpn);
    EXPECT_FALSE(mount.received.sources->vniStatusDir("HSC"));
    ASSERT_TRUE(mount.received.sources->vniStatusDir("QVX"));
    EXPECT_FALSE(mount.advertised.sources);
}

TEST(Merge, EvpnsTablesHoldTheVtepWithTheMostMoves) {
    auto state = told({{mergedVni, mergedMac1, vtep(1), 1},
                       {mergedVni, mergedMac1, vtep(2), 7},
                       {mergedVni, mergedMac1, vtep(3), 7},
                       {mergedVni, mergedMac2, vtep(4)}});
    state.remote.floods = {{mergedVni, {}, vtep(5)}, {mergedVni, mergedMac1, vtep(6)}};
    auto const tables = mountOf({state}, Role::evpn).received.evpn->hostFloodTable("EVPN");
    EXPECT_EQ(tables->hostTable()->host({mergedMac1, mergedVni}), VcsEvpn::Host(vtep(2), 7));
    EXPECT_EQ(tables->hostTable()->host({mergedMac2, mergedVni}), VcsEvpn::Host(vtep(4), 0));
    EXPECT_NE(tables->floodTable()->floodEntry({mergedVni, vtep(5)}), VcsEvpn::FloodEntry());
    EXPECT_EQ(tables->floodTable()->floodEntry({mergedVni, vtep(6)}), VcsEvpn::FloodEntry());
}

TEST(Merge, ASwitchWithoutASystemIdentifierIsInNoMapOfRouters) {
    Facts state;
    state.switches["leaf1"] = {.vteps = {vtep(1)}, .routers = {"prod"}};
    state.switches["leaf2"] = {.systemId = mergedMac2, .vteps = {vtep(2)}, .routers = {"prod"}};
    auto const routers = mountOf({state}).routers;
    auto const text =
        rendered(Cli::vcsLRMapFactory(routers.publishStatus, routers.switchInfoDir, Vex::String(),
                                      Vex::String(), Cli::vtepListFactory()));
    EXPECT_EQ(text.find("leaf1"), std::string::npos);
    EXPECT_NE(text.find("prod                                           10.0.0.2        "
                        "02:00:00:00:00:02"),
              std::string::npos)
        << text;
}

TEST(Merge, OnlyWhatIsSelectedIsMounted) {
    auto state =
        learned("leaf1", {{mergedVni, mergedMac1, vtep(1)}, {Vxlan::Vni(11), mergedMac1, vtep(1)}});
    state.local["leaf2"] = state.local["leaf1"];
    state.settle();
    Merge mount(state::Selection{.advertised = false, .vni = Vxlan::Vni(11), .source = "leaf2"});
    mount.add(state, Role::switches);
    auto const mounted = mount.mount();
    EXPECT_TRUE(switchOf(mounted, "leaf1")->vniStatusV2().empty());
    EXPECT_EQ(switchOf(mounted, "leaf2")->vniStatusV2().size(), 1);
}

namespace {

Deadline mergeTimePassed() {
    return {Deadline::Clock::now() - std::chrono::seconds(1), std::chrono::seconds(5)};
}

/// What is said of putting that together after the deadline; "mounted" if it is done all the same.
std::string lateMount(Facts facts, Role role) {
    facts.settle();
    Merge mount({}, mergeTimePassed());
    try {
        mount.add(facts, role);
        mount.mount();
    } catch (TimedOut const & late) {
        return late.what();
    }
    return "mounted";
}

constexpr unsigned manyForMerge = 5000;
constexpr char const * notPutTogether = "time limit: the answers were not put together within 5 s";

Nolt::EthAddr manyMac(unsigned number) {
    return Nolt::EthAddr::ofValue(0x020000000000ULL + number);
}

Facts factsOfBothSides(SideFacts const & side) {
    Facts facts;
    facts.local["leaf1"] = side;
    facts.remote = side;
    return facts;
}

} // namespace

TEST(MergeDeadline, FewFactsAreMountedAfterIt) {
    EXPECT_EQ(lateMount(learned("leaf1", {{mergedVni, mergedMac1, vtep(1)}}), Role::switches),
              "mounted");
}

TEST(MergeDeadline, ManyMacsAreNotMountedAfterItInAnyRole) {
    SideFacts side;
    for (unsigned number = 1; number <= manyForMerge; ++number) {
        side.macs.push_back({mergedVni, manyMac(number), vtep(1)});
    }
    for (auto const role : {Role::switches, Role::hsc, Role::qvx, Role::evpn}) {
        EXPECT_EQ(lateMount(factsOfBothSides(side), role), notPutTogether);
    }
}

TEST(MergeDeadline, ManyPathsOfOneMacAreNotMountedAfterIt) {
    SideFacts side;
    for (unsigned number = 1; number <= manyForMerge; ++number) {
        side.macs.push_back({mergedVni, mergedMac1, vtep(number)});
    }
    EXPECT_EQ(lateMount(factsOfBothSides(side), Role::switches), notPutTogether);
}

TEST(MergeDeadline, ALongFloodListIsNotMountedAfterIt) {
    SideFacts side;
    for (unsigned number = 1; number <= manyForMerge; ++number) {
        side.floods.push_back({mergedVni, {}, vtep(number)});
    }
    EXPECT_EQ(lateMount(factsOfBothSides(side), Role::switches), notPutTogether);
    EXPECT_EQ(lateMount(factsOfBothSides(side), Role::evpn), notPutTogether);
}

TEST(MergeDeadline, ManyBindingsAreNotMountedAfterIt) {
    SideFacts side;
    for (unsigned number = 1; number <= manyForMerge; ++number) {
        side.bindings.push_back({mergedVni, Nolt::IpGenAddr(vtep(number)), mergedMac1});
    }
    EXPECT_EQ(lateMount(factsOfBothSides(side), Role::switches), notPutTogether);
}

TEST(MergeDeadline, ManyVnisAreNotMountedAfterIt) {
    SideFacts side;
    for (unsigned number = 1; number <= manyForMerge; ++number) {
        side.vnis.emplace_back(number);
    }
    EXPECT_EQ(lateMount(factsOfBothSides(side), Role::switches), notPutTogether);
}

TEST(MergeDeadline, ManyRoutesAreNotMountedAfterIt) {
    Facts facts;
    for (unsigned number = 1; number <= manyForMerge; ++number) {
        facts.routers["r1"].routes[Nolt::IpGenPrefix::fromString("10.0.0.0/8")].insert(
            Nolt::IpGenAddr(vtep(number)));
    }
    EXPECT_EQ(lateMount(facts, Role::switches), notPutTogether);
}

// Each step between two lists looks at the clock.
TEST(MergeDeadline, SeveralAnswersAreNotMergedAfterIt) {
    auto one = learned("leaf1", {{mergedVni, mergedMac1, vtep(1)}});
    auto other = learned("leaf1", {{mergedVni, mergedMac2, vtep(1)}});
    one.settle();
    other.settle();
    Merge mount({}, mergeTimePassed());
    mount.add(one, Role::switches);
    mount.add(other, Role::switches);
    EXPECT_THROW(mount.mount(), TimedOut);
}

} // namespace vxshow::test
