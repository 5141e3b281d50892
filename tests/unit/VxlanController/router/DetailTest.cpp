#include "state/VniStatusDirV2.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/Traced.h"
#include "tests/unit/VxlanController/router/RouterState.h"

#include <gtest/gtest.h>

using namespace std::string_literals;
using namespace VxlanController;
using Nolt::IpGenAddrWithMask;

namespace {

constexpr char const * tracedDetailRender =
    "8 void VxlanController::Cli::VcsLR::render(U32, U32, U32)\n";
constexpr char const * tracedDetailInitialize =
    "8 void VxlanController::Cli::VcsLR::initialize()\n";
constexpr char const * tracedEmpty =
    "8 void VxlanController::Cli::VcsLR::initialize() lRStatusDir is empty\n";
constexpr char const * tracedText = "8 void VxlanController::Cli::renderLRText(outfmt::Printer&, "
                                    "const VxlanController::Cli::VcsLR*)\n";

/// Two routers with a port and an uplink each.
RouterState routersWithUplinks() {
    RouterState state;
    state.leaf(leafOne, {"10.9.0.1"}, {"red", "blue"})
        .port("red", "10.0.0.1/24", 10)
        .port("blue", "10.0.0.2/24", 20)
        .uplink("red", "10.1.0.1/24", {{"Et1", 7}})
        .uplink("blue", "10.1.0.2/24", {{"Et2", 8}});
    return state;
}

/// The switch shown for the uplink of `router`.
std::string switchOf(RouterState const & state, std::string const & router,
                     RouterFilters const & filters = {}) {
    auto const command = detailCommand(state, filters);
    rendered(command);
    auto const detail = command->lRDetail(router);
    return detail->ipUplinkPort(IpGenAddrWithMask::fromString("10.1.0.1/24")).switchId();
}

RouterState oneUplink() {
    RouterState state;
    state.uplink("red", "10.1.0.1/24", {{"Et1", 7}});
    return state;
}

std::string const emptyDetail = "\n"
                                "Total entries for this criterion: 0\n"
                                "\n";

} // namespace

TEST(Detail, WithoutStatusDirectoryBothTablesAreEmpty) {
    RouterState state = routersWithUplinks();
    state.lRStatusDir = nullptr;
    EXPECT_EQ(detailText(state), detailText(RouterState()));
    EXPECT_EQ(detailJson(state), "{\"router\":{}}\n");
    auto const command = detailCommand(state);
    rendered(command);
    EXPECT_TRUE(command->switchMap().empty());
    EXPECT_TRUE(command->lRMap().empty());
}

TEST(Detail, TracesItsSteps) {
    Traced const trace;
    detailText(routersWithUplinks());
    EXPECT_EQ(trace.text, std::string(tracedDetailRender) + tracedDetailInitialize + tracedText);
}

TEST(Detail, TracesNoTextFunctionForJson) {
    Traced const trace;
    detailJson(routersWithUplinks());
    EXPECT_EQ(trace.text, std::string(tracedDetailRender) + tracedDetailInitialize);
}

TEST(Detail, TracesAMissingStatusDirectory) {
    RouterState state = routersWithUplinks();
    state.lRStatusDir = nullptr;
    Traced trace;
    detailText(state);
    EXPECT_EQ(trace.text,
              std::string(tracedDetailRender) + tracedDetailInitialize + tracedEmpty + tracedText);
    trace.text.clear();
    detailJson(state);
    EXPECT_EQ(trace.text, std::string(tracedDetailRender) + tracedDetailInitialize + tracedEmpty);
}

TEST(Detail, AnEmptyStatusDirectoryIsNotAMissingOne) {
    Traced const trace;
    detailJson(RouterState());
    EXPECT_EQ(trace.text, std::string(tracedDetailRender) + tracedDetailInitialize);
}

TEST(Detail, TracesNothingBelowLevelEight) {
    Traced const trace;
    Trace::disableAll();
    Trace::enableAllUpTo(7);
    RouterState state = routersWithUplinks();
    state.lRStatusDir = nullptr;
    detailText(state);
    EXPECT_EQ(trace.text, "");
}

TEST(Detail, ARouterThatNoSwitchPublishesHasNoSwitch) {
    RouterState state = oneUplink();
    state.leaf(leafOne, {"10.9.0.1"}, {"blue"});
    std::string const expected =
        "red         10.1.0.1/24                          7    Et1                           \n"
        "\n"
        "Total entries for this criterion: 1\n"
        "\n";
    EXPECT_EQ(uplinkBody(state), expected);
    EXPECT_EQ(switchOf(state, "red"), "");
}

TEST(Detail, WithoutSwitchInformationNoSwitchIsShown) {
    RouterState state = oneUplink();
    state.leaf(leafOne, {"10.9.0.1"}, {"red"});
    EXPECT_EQ(switchOf(state, "red"), leafOne);
    state.switchInfoDir = nullptr;
    EXPECT_EQ(switchOf(state, "red"), "");
}

TEST(Detail, WithoutPublishStatusNoSwitchIsShown) {
    RouterState state = oneUplink();
    state.leaf(leafOne, {"10.9.0.1"}, {"red"});
    state.publishStatus = nullptr;
    EXPECT_EQ(switchOf(state, "red"), "");
}

TEST(Detail, TheLowestSwitchThatPublishesTheRouterIsShown) {
    RouterState state = oneUplink();
    state.leaf("0a:00:00:00:00:03", {"10.9.0.3"}, {"red"})
        .leaf("02:00:00:00:00:01", {"10.9.0.1"}, {"blue"})
        .leaf("02:00:00:00:00:02", {"10.9.0.2"}, {"red", "blue"})
        .leaf("00:00:00:00:00:09", {"10.9.0.9"}, {"red"})
        .inactive("10.9.0.9");
    EXPECT_EQ(switchOf(state, "red"), "02:00:00:00:00:02");
    EXPECT_EQ(switchOf(state, "red", {.router = "red"}), "02:00:00:00:00:02");
}

TEST(Detail, ARouterThatIsOnlyPublishedHasNoDetail) {
    RouterState state = oneUplink();
    state.leaf(leafOne, {"10.9.0.1"}, {"red", "blue"});
    auto const command = detailCommand(state);
    rendered(command);
    EXPECT_EQ(command->lRDetail().size(), 1U);
    EXPECT_EQ(command->lRMap().size(), 2U);
}

TEST(Detail, ARouterFilterSelectsByTheExactName) {
    RouterState state = routersWithUplinks();
    state.port("Red", "10.0.0.3/24", 1).port("redd", "10.0.0.3/24", 1).port("re", "10.0.0.3/24", 1);
    EXPECT_EQ(portBody(state, {.router = "red"}),
              "red                                               10.0.0.1/24        10         \n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
    std::string const expected =
        "red         10.1.0.1/24        02:00:00:00:00:01 7    Et1                           \n"
        "\n"
        "Total entries for this criterion: 1\n"
        "\n";
    EXPECT_EQ(uplinkBody(state, {.router = "red"}), expected);
}

TEST(Detail, ARouterFilterThatMatchesNothingLeavesHeadersAndTotals) {
    EXPECT_EQ(detailText(routersWithUplinks(), {.router = "green"}), detailText(RouterState()));
    EXPECT_EQ(portBody(routersWithUplinks(), {.router = "green"}), emptyDetail);
    EXPECT_EQ(uplinkBody(routersWithUplinks(), {.router = "green"}), emptyDetail);
    EXPECT_EQ(detailJson(routersWithUplinks(), {.router = "green"}), "{\"router\":{}}\n");
}

TEST(Detail, EntriesThatAreNotRoutersAreSkipped) {
    RouterState state;
    state.lRStatusDir->entityIs("blue", Vex::makePtr<VniStatusDirV2>());
    state.lRStatusDir->dirIs("green");
    state.port("red", "10.0.0.1/24", 10);
    EXPECT_EQ(portBody(state),
              "red                                               10.0.0.1/24        10         \n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
    EXPECT_EQ(portBody(state, {.router = "blue"}), emptyDetail);
    EXPECT_EQ(portBody(state, {.router = "green"}), emptyDetail);
}

TEST(Detail, ARouterHasItsOwnNameNotThatOfItsEntry) {
    RouterState state;
    state.status("entry", "red");
    state.port("entry", "10.0.0.1/24", 10);
    EXPECT_EQ(portBody(state, {.router = "red"}),
              "red                                               10.0.0.1/24        10         \n"
              "\n"
              "Total entries for this criterion: 1\n"
              "\n");
    EXPECT_EQ(portBody(state, {.router = "entry"}), emptyDetail);
}

TEST(Detail, TwoEntriesOfOneRouterAreMerged) {
    RouterState state;
    state.status("a", "red");
    state.status("b", "red");
    state.port("a", "10.0.0.1/24", 10).port("b", "10.0.0.2/24", 20);
    EXPECT_EQ(portBody(state),
              "red                                               10.0.0.1/24        10         \n"
              "                                                  10.0.0.2/24        20         \n"
              "\n"
              "Total entries for this criterion: 2\n"
              "\n");
}

TEST(Detail, OneVlanIsShownForAllPortsOfAnUplink) {
    RouterState state;
    state.uplink("red", "10.1.0.1/24", {{"Et1", 101}, {"Et2", 102}, {"Et2", 103}, {"Et3", 104}});
    auto const command = detailCommand(state);
    rendered(command);
    auto const & uplink =
        command->lRDetail("red")->ipUplinkPort(IpGenAddrWithMask::fromString("10.1.0.1/24"));
    // The same one in each process, whatever the order of the hashed collection.
    EXPECT_EQ(uplink.vlanId(), Bridging::VlanIdOrNone(103));
    EXPECT_EQ(uplink.port().size(), 3U);
}

TEST(Detail, CopiesAllOfAPort) {
    RouterState state;
    state.port("red", "10.0.0.1/24", 10, "02:00:00:00:00:01", "10.9.0.1");
    auto const command = detailCommand(state);
    rendered(command);
    auto const ip = IpGenAddrWithMask::fromString("10.0.0.1/24");
    EXPECT_EQ(command->lRDetail("red")->ipPort(ip),
              state.status("red").ipPort().find(ip)->element());
}
