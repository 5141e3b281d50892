#include "Vex/Reinstantiation.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/Traced.h"
#include "tests/unit/VxlanController/router/RouterState.h"

#include <gtest/gtest.h>

using namespace std::string_literals;
using namespace VxlanController;
using Nolt::IpGenAddr;

namespace {

/// The switches and VTEPs of each router of a listing, one per line.
std::string rows(RouterState const & state, RouterFilters const & filters = {}) {
    auto const command = mapCommand(state, filters);
    rendered(command);
    std::string text;
    for (Cli::LRMap const & router : command->lRMap()) {
        for (Cli::SwitchMap const & leaf : router.switchList()) {
            text += router.lRName() + " " + leaf.switchId() + " " + leaf.vtepAddr().stringValue() +
                    "\n";
        }
    }
    return text;
}

/// Three switches with one router each.
RouterState threeLeaves() {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"red"})
        .leaf(leafTwo, {"10.0.0.2"}, {"red"})
        .leaf(leafThree, {"10.0.0.3"}, {"red"});
    return state;
}

std::string const emptyMapBody = "\n"
                                 "Total entries for this criterion: 0\n"
                                 "\n";

} // namespace

TEST(BuildMap, WithoutSwitchInformationTheMapIsEmpty) {
    RouterState state = threeLeaves();
    state.switchInfoDir = nullptr;
    EXPECT_EQ(mapBody(state), emptyMapBody);
    EXPECT_EQ(mapBody(state, {.switchId = leafOne}), emptyMapBody);
    EXPECT_EQ(mapBody(state, {.vteps = {"10.0.0.1"}}), emptyMapBody);
    EXPECT_EQ(mapJson(state), "{\"logicalRouterMap\":{}}\n");
}

TEST(BuildMap, WithoutPublishStatusTheMapIsEmpty) {
    RouterState state = threeLeaves();
    state.publishStatus = nullptr;
    EXPECT_EQ(mapBody(state), emptyMapBody);
    EXPECT_EQ(mapJson(state), "{\"logicalRouterMap\":{}}\n");
}

TEST(BuildMap, ANullVtepFilterIsNoFilter) {
    RouterState const state = threeLeaves();
    auto const command =
        Cli::vcsLRMapFactory(state.publishStatus, state.switchInfoDir, "", "", nullptr);
    EXPECT_EQ(rendered(command), mapText(state));
    EXPECT_EQ(command->lRMap("red")->switchList().size(), 3U);
}

TEST(BuildMap, ASwitchFilterSelectsThatSwitch) {
    EXPECT_EQ(rows(threeLeaves(), {.switchId = leafTwo}), "red 02:00:00:00:00:02 10.0.0.2\n");
}

TEST(BuildMap, AnUnknownSwitchSelectsNothingSilently) {
    Traced const trace;
    for (std::string const & unknown :
         {"02:00:00:00:00:04"s, "leaf1"s, "0200.0000.0001"s, "02:00:00:00:00:0"s}) {
        EXPECT_EQ(mapBody(threeLeaves(), {.switchId = unknown}), emptyMapBody);
    }
    EXPECT_EQ(trace.text, "");
}

TEST(BuildMap, ASwitchFilterTakesPrecedenceOverAVtepFilter) {
    EXPECT_EQ(rows(threeLeaves(), {.switchId = leafTwo, .vteps = {"10.0.0.1", "10.0.0.3"}}),
              "red 02:00:00:00:00:02 10.0.0.2\n");
    EXPECT_EQ(rows(threeLeaves(), {.switchId = "leaf9", .vteps = {"10.0.0.1"}}), "");
}

TEST(BuildMap, AVtepFilterSelectsTheSwitchesOfEachVtep) {
    EXPECT_EQ(rows(threeLeaves(), {.vteps = {"10.0.0.3", "10.0.0.1"}}),
              "red 02:00:00:00:00:01 10.0.0.1\n"
              "red 02:00:00:00:00:03 10.0.0.3\n");
    RouterState anycast;
    anycast.leaf(leafOne, {"10.0.0.9"}, {"red"}).leaf(leafTwo, {"10.0.0.9"}, {"red"});
    EXPECT_EQ(rows(anycast, {.vteps = {"10.0.0.9"}}), "red 02:00:00:00:00:01 10.0.0.9\n"
                                                      "red 02:00:00:00:00:02 10.0.0.9\n");
}

TEST(BuildMap, AnUnknownVtepSelectsNothingSilently) {
    Traced const trace;
    EXPECT_EQ(mapBody(threeLeaves(), {.vteps = {"10.0.0.4"}}), emptyMapBody);
    EXPECT_EQ(rows(threeLeaves(), {.vteps = {"10.0.0.4", "10.0.0.1"}}),
              "red 02:00:00:00:00:01 10.0.0.1\n");
    EXPECT_EQ(trace.text, "");
}

TEST(BuildMap, ASwitchReachedThroughTwoVtepsIsInsertedOnceWithItsActiveOne) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1", "10.0.0.2"}, {"red"}).inactive("10.0.0.1");
    EXPECT_EQ(rows(state, {.vteps = {"10.0.0.1", "10.0.0.2"}}), "red 02:00:00:00:00:01 10.0.0.2\n");
    EXPECT_EQ(rows(state, {.vteps = {"10.0.0.1"}}), "red 02:00:00:00:00:01 10.0.0.2\n");
}

TEST(BuildMap, AVtepCanSelectASwitchThatDoesNotListIt) {
    RouterState state = threeLeaves();
    state.vtepNames("10.0.0.9", leafTwo);
    EXPECT_EQ(rows(state, {.vteps = {"10.0.0.9"}}), "red 02:00:00:00:00:02 10.0.0.2\n");
}

TEST(BuildMap, AVtepThatNamesAnUnknownSwitchIsTraced) {
    RouterState state = threeLeaves();
    state.vtepNames("10.0.0.1", "leaf9");
    Traced const trace;
    EXPECT_EQ(rows(state, {.vteps = {"10.0.0.1"}}), "red 02:00:00:00:00:01 10.0.0.1\n");
    EXPECT_EQ(trace.text, "8 SwitchInfo not found for leaf9\n");
}

TEST(BuildMap, NothingElseIsTraced) {
    RouterState state = threeLeaves();
    state.vtepNames("10.0.0.1", "leaf9").leaf("leaf1", {"10.0.0.7"}).leaf(leafTwo, {});
    Traced const trace;
    mapText(state);
    mapJson(state);
    mapText(state, {.switchId = leafOne});
    state.publishStatus = nullptr;
    mapText(state);
    state.switchInfoDir = nullptr;
    mapText(state);
    EXPECT_EQ(trace.text, "");
}

TEST(BuildMap, ASwitchWithoutAnActiveVtepIsLeftOut) {
    RouterState state = threeLeaves();
    state.inactive("10.0.0.2").leaf("02:00:00:00:00:04", {}, {"red"});
    std::string const others = "red 02:00:00:00:00:01 10.0.0.1\n"
                               "red 02:00:00:00:00:03 10.0.0.3\n";
    EXPECT_EQ(rows(state), others);
    EXPECT_EQ(rows(state, {.switchId = leafTwo}), "");
    EXPECT_EQ(rows(state, {.vteps = {"10.0.0.2"}}), "");
}

TEST(BuildMap, OfSeveralVtepsTheActiveOneIsShown) {
    for (char const * active : {"10.0.0.1", "10.0.0.2", "10.0.0.3", "2001:db8::4"}) {
        RouterState state;
        state.leaf(leafOne, {"10.0.0.1", "10.0.0.2", "10.0.0.3", "2001:db8::4"}, {"red"});
        for (char const * vtep : {"10.0.0.1", "10.0.0.2", "10.0.0.3", "2001:db8::4"}) {
            if (vtep != active) {
                state.inactive(vtep);
            }
        }
        EXPECT_EQ(rows(state), "red 02:00:00:00:00:01 "s + active + "\n");
    }
}

TEST(BuildMap, OneVtepOnTwoInterfacesOfASwitchIsOneRow) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"red"});
    auto const vtep = state.switchInfoDir->vtepMapIs(IpGenAddr::fromString("10.0.0.1"));
    state.switchInfoDir->switchInfoIs(leafOne)->vtepMapIs({vtep->address(), "Vxlan2"}, vtep);
    vtep->switchIdIs({leafOne, "Vxlan2"});
    EXPECT_EQ(rows(state), "red 02:00:00:00:00:01 10.0.0.1\n");
    EXPECT_EQ(rows(state, {.vteps = {"10.0.0.1"}}), "red 02:00:00:00:00:01 10.0.0.1\n");
}

TEST(BuildMap, ASwitchThatPublishesNothingIsLeftOut) {
    RouterState state = threeLeaves();
    state.leaf("02:00:00:00:00:04", {"10.0.0.4"});
    EXPECT_EQ(rows(state, {.switchId = "02:00:00:00:00:04"}), "");
}

TEST(BuildMap, AnIdentifierThatIsNotAnEthernetAddressHasNoPublishStatus) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"red"}).publishes("00:00:00:00:00:00", routerPath("red"));
    for (char const * id : {"leaf1", "", "02:00:00:00:00", "02:00:00:00:00:01 ", "020000000001",
                            "02:00:00:00:00:01:02", "02:00:00:00:00:0g", "%s"}) {
        state.leaf(id, {"10.0.0.9"});
    }
    EXPECT_EQ(rows(state), "red 02:00:00:00:00:01 10.0.0.1\n");
}

TEST(BuildMap, AnIdentifierInAnotherSpellingIsLookedUpAsTheSameAddress) {
    RouterState state;
    state.publishes("0a:00:00:00:00:0b", routerPath("red"));
    for (char const * id : {"0a:00:00:00:00:0b", "0A:00:00:00:00:0B", "0a-00-00-00-00-0b"}) {
        state.leaf(id, {"10.0.0.1"});
    }
    EXPECT_EQ(mapBody(state),
              "red                                            10.0.0.1        0A:00:00:00:00:0B\n"
              "                                               10.0.0.1        0a-00-00-00-00-0b\n"
              "                                               10.0.0.1        0a:00:00:00:00:0b\n"
              "\n"
              "Total entries for this criterion: 3\n"
              "\n");
    EXPECT_EQ(rows(state, {.switchId = "0A:00:00:00:00:0B"}), "red 0A:00:00:00:00:0B 10.0.0.1\n");
}

TEST(BuildMap, ARouterFilterSelectsByTheExactName) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"red", "Red", "reddish", "re", "red "})
        .leaf(leafTwo, {"10.0.0.2"}, {"reddish"});
    EXPECT_EQ(rows(state, {.router = "red"}), "red 02:00:00:00:00:01 10.0.0.1\n");
    EXPECT_EQ(rows(state, {.router = "reddish", .switchId = leafTwo}),
              "reddish 02:00:00:00:00:02 10.0.0.2\n");
}

TEST(BuildMap, ARouterFilterThatMatchesNothingIsAHeaderAndATotalOfZero) {
    EXPECT_EQ(mapBody(threeLeaves(), {.router = "blue"}), emptyMapBody);
    EXPECT_EQ(mapJson(threeLeaves(), {.router = "blue"}), "{\"logicalRouterMap\":{}}\n");
}

TEST(BuildMap, APathThatIsOnlyThePrefixIsARouterWithAnEmptyName) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"", "red"}).leaf(leafTwo, {"10.0.0.2"}, {""});
    EXPECT_EQ(mapBody(state),
              "                                               10.0.0.1        02:00:00:00:00:01\n"
              "                                               10.0.0.2        02:00:00:00:00:02\n"
              "red                                            10.0.0.1        02:00:00:00:00:01\n"
              "\n"
              "Total entries for this criterion: 3\n"
              "\n");
}

TEST(BuildMap, OnlyPathsUnderThePrefixAreRouters) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"red", "red/blue", "/green"});
    for (char const * path :
         {"", "v", "vxlancontroller/version2/logicalRouter",
          "vxlancontroller/version2/logicalrouter/x", "vxlancontroller/version3/logicalRouter/x",
          "/vxlancontroller/version2/logicalRouter/x", "vxlancontroller/version2/logicalRouterx",
          "vxlancontroller//version2/logicalRouter/x"}) {
        state.publishes(leafOne.c_str(), path);
    }
    EXPECT_EQ(rows(state), "/green 02:00:00:00:00:01 10.0.0.1\n"
                           "red 02:00:00:00:00:01 10.0.0.1\n"
                           "red/blue 02:00:00:00:00:01 10.0.0.1\n");
}

TEST(BuildMap, OnlyMountsOfTheExactKindAreRouters) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"red"});
    int number = 0;
    for (std::string const & kind :
         {""s, "vxlan"s, "VXLAN"s, "Vxlan "s, " Vxlan"s, "Vxla"s, "Vxlan2"s, "Vxlan\0"s}) {
        state.publishes(leafOne.c_str(), routerPath("other" + std::to_string(++number)), kind);
    }
    EXPECT_EQ(rows(state), "red 02:00:00:00:00:01 10.0.0.1\n");
}

TEST(BuildMap, RoutersShareTheSwitchesThatTheyList) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"red", "blue"}).leaf(leafTwo, {"10.0.0.2"});
    auto const command = mapCommand(state);
    command->buildLRMap("", "", nullptr);
    auto const shared = command->switchMap(leafOne);
    EXPECT_EQ(command->lRMap("red")->switchList(leafOne), shared);
    EXPECT_EQ(command->lRMap("blue")->switchList(leafOne), shared);
    EXPECT_EQ(command->switchMap().size(), 2U);
    EXPECT_EQ(command->lRMap("red")->switchList().size(), 1U);
}

TEST(BuildMap, KeepsTheSwitchesThatPublishNothing) {
    auto const command = mapCommand(threeLeaves());
    command->buildLRMap("blue", "", nullptr);
    EXPECT_EQ(command->switchMap().size(), 3U);
    EXPECT_TRUE(command->lRMap().empty());
}

TEST(BuildMap, TakesItsFiltersFromTheCallNotFromTheCommand) {
    auto const command = mapCommand(threeLeaves(), {.router = "blue", .switchId = leafTwo});
    command->buildLRMap("red", leafOne, nullptr);
    EXPECT_EQ(command->lRMap().size(), 1U);
    EXPECT_EQ(command->switchMap().size(), 1U);
    EXPECT_NE(command->switchMap(leafOne), nullptr);
}

TEST(BuildMap, TheStateIsNotChanged) {
    RouterState const state = threeLeaves();
    auto const vtep = state.switchInfoDir->vtepMap(IpGenAddr::fromString("10.0.0.1"));
    Vex::U32 const before = vtep->references();
    mapText(state, {.vteps = {"10.0.0.1", "10.0.0.9"}});
    EXPECT_EQ(vtep->references(), before);
    EXPECT_EQ(state.switchInfoDir->switchInfo().size(), 3U);
    EXPECT_EQ(state.switchInfoDir->vtepMap(IpGenAddr::fromString("10.0.0.9")), nullptr);
}
