#include "outfmt/WriteError.h"
#include "tests/unit/VxlanController/Rendered.h"
#include "tests/unit/VxlanController/command/Interrupted.h"
#include "tests/unit/VxlanController/router/RouterState.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

/// What the three commands of logical routers have in common: formats, interrupts, failures,
/// and what they leave behind.
namespace {

using namespace VxlanController;

class RouterRender : public testing::Test {
protected:
    RouterRender() { outfmt::clearInterrupt(); }

    ~RouterRender() override { outfmt::clearInterrupt(); }
};

/// Calls `body` with a command of each type that lists `state`.
template <class Body>
void forEachCommand(RouterState const & state, Body && body) {
    {
        SCOPED_TRACE("map");
        body(mapCommand(state));
    }
    {
        SCOPED_TRACE("detail");
        body(detailCommand(state));
    }
    SCOPED_TRACE("routes");
    body(routesCommand(state));
}

/// Renders `command`, which gets interrupted: it must report that on standard output, return, and
/// print nothing.
template <class CommandPtr>
void expectInterrupted(CommandPtr const & command, Vex::U32 format = textFormat) {
    std::string printed;
    EXPECT_EQ(standardOutputOf([&] { printed = rendered(command, format); }),
              "exiting on interrupt\n");
    EXPECT_EQ(printed.substr(0, 100), "");
    outfmt::clearInterrupt();
}

/// Interrupts `command` when the first `type` is created; it must not create many more.
template <class CommandPtr>
void expectEndsSoon(CommandPtr const & command, std::string const & type) {
    SCOPED_TRACE(type);
    InterruptOnCreation const first("VxlanController::Cli::" + type);
    expectInterrupted(command);
    EXPECT_GT(first.created(), 0U);
    EXPECT_LT(first.created(), 10'000U);
}

Vex::U64 liveModelObjects() {
    return Vex::allocTrackLiveCount("VxlanController::Cli::");
}

} // namespace

TEST_F(RouterRender, EveryFormatButOneIsJson) {
    forEachCommand(manyRouters(3), [](auto const & command) {
        std::string const json = rendered(command, jsonFormat);
        EXPECT_EQ(json.front(), '{');
        for (Vex::U32 format : {0U, 4U, 4294967295U}) {
            EXPECT_EQ(rendered(command, format), json);
        }
        EXPECT_EQ(rendered(command, 3).substr(0, 5), "{\n  \"");
        EXPECT_EQ(rendered(command, 1).substr(0, 81), std::string(80, '-') + "\n");
    });
}

TEST_F(RouterRender, EveryRevisionPrintsTheSame) {
    forEachCommand(manyRouters(3), [](auto const & command) {
        for (Vex::U32 format : {1U, 2U, 3U}) {
            std::string const usual = rendered(command, format, 2);
            for (Vex::U32 revision : {0U, 1U, 3U, 4294967295U}) {
                EXPECT_EQ(rendered(command, format, revision), usual);
            }
        }
    });
}

TEST_F(RouterRender, ACommandCanBeRenderedTwice) {
    for (Vex::U32 format : {textFormat, jsonFormat}) {
        forEachCommand(manyRouters(3), [&](auto const & command) {
            std::string const once = rendered(command, format);
            EXPECT_EQ(rendered(command, format), once);
        });
    }
}

TEST_F(RouterRender, RenderingAgainShowsWhatWasPublishedSince) {
    RouterState state = manyRouters(1);
    auto const map = mapCommand(state);
    auto const detail = detailCommand(state);
    auto const routes = routesCommand(state);
    rendered(map);
    rendered(detail);
    rendered(routes);
    state.leaf("02:00:00:00:00:0a", {"10.9.0.1"}, {"red"})
        .port("red", "10.0.0.1/24", 10)
        .route("red", "10.1.0.0/16");
    EXPECT_EQ(rendered(map), mapText(state));
    EXPECT_EQ(rendered(detail), detailText(state));
    EXPECT_EQ(rendered(routes), routesText(state));
}

TEST_F(RouterRender, RenderingAgainShowsNoRouterThatIsGone) {
    RouterState state = manyRouters(1);
    state.router("old").port("old", "10.5.0.1/24", 10).route("old", "10.5.0.0/16");
    auto const detail = detailCommand(state);
    auto const routes = routesCommand(state);
    EXPECT_NE(rendered(detail).find("old"), std::string::npos);
    EXPECT_NE(rendered(routes).find("old"), std::string::npos);
    state.lRStatusDir->entityIs("old", nullptr);
    EXPECT_EQ(rendered(detail), detailText(state));
    EXPECT_EQ(rendered(routes), routesText(state));
}

TEST_F(RouterRender, RenderingAgainShowsNoSwitchWhoseVtepIsNoLongerActive) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1"}, {"red", "blue"}).leaf(leafTwo, {"10.0.0.2"}, {"red"});
    state.router("red").uplink("red", "10.1.0.1/24", {{"Ethernet1"}});
    auto const map = mapCommand(state);
    auto const detail = detailCommand(state);
    EXPECT_NE(rendered(map).find("blue"), std::string::npos);
    EXPECT_NE(rendered(detail).find(leafOne), std::string::npos);
    state.inactive("10.0.0.1");
    EXPECT_EQ(rendered(map), mapText(state));
    EXPECT_EQ(rendered(detail), detailText(state));
}

TEST_F(RouterRender, RenderingAgainShowsTheVtepThatIsActiveNow) {
    RouterState state;
    state.leaf(leafOne, {"10.0.0.1", "10.0.0.2"}, {"red"}).inactive("10.0.0.2");
    auto const map = mapCommand(state);
    auto const detail = detailCommand(state);
    EXPECT_NE(rendered(map).find("10.0.0.1 "), std::string::npos);
    rendered(detail);
    state.inactive("10.0.0.1");
    state.switchInfoDir->vtepMapIs(Nolt::IpGenAddr::fromString("10.0.0.2"))->activeIs(true);
    std::string const again = rendered(map);
    EXPECT_EQ(again, mapText(state));
    EXPECT_NE(again.find("10.0.0.2 "), std::string::npos);
    EXPECT_EQ(rendered(detail), detailText(state));
}

TEST_F(RouterRender, AnInterruptBeforeCollectionPrintsTheExitingLineAndNoTable) {
    for (RouterState const & state : {RouterState(), manyRouters(3)}) {
        for (Vex::U32 format : {textFormat, jsonFormat}) {
            forEachCommand(state, [&](auto const & command) {
                outfmt::requestInterrupt();
                expectInterrupted(command, format);
            });
        }
    }
}

TEST_F(RouterRender, AnInterruptWithoutAnyStatePrintsNoTableEither) {
    RouterState state;
    state.publishStatus = nullptr;
    state.switchInfoDir = nullptr;
    state.lRStatusDir = nullptr;
    forEachCommand(state, [](auto const & command) {
        outfmt::requestInterrupt();
        expectInterrupted(command);
    });
}

TEST_F(RouterRender, AnInterruptDuringCollectionEndsItSoon) {
    RouterState const state = manyRouters(20'000);
    for (char const * type : {"SwitchMap", "LRMap"}) {
        expectEndsSoon(mapCommand(state), type);
        expectEndsSoon(detailCommand(state), type);
    }
    expectEndsSoon(detailCommand(state), "LRDetail");
    expectEndsSoon(routesCommand(state), "LRRouteByName");
}

TEST_F(RouterRender, AnInterruptWithinOneSwitchOrOneRouterEndsItSoon) {
    RouterState state;
    state.leaf("02:00:00:00:00:01", {"10.9.0.1"});
    for (Vex::U32 i = 0; i < 20'000; ++i) {
        state.publishes("02:00:00:00:00:01", routerPath(std::to_string(i)));
        Nolt::IpGenPrefix const prefix(Nolt::IpAddr(i), 32);
        state.status("red").routeIs(LRRouteV2(prefix));
    }
    expectEndsSoon(mapCommand(state), "LRMap");
    expectEndsSoon(detailCommand(state), "LRMap");
    expectEndsSoon(routesCommand(state), "LRRoute");
}

TEST_F(RouterRender, AnInterruptWithinOneRouteEndsItSoon) {
    LRRouteV2 route(Nolt::IpGenPrefix(Nolt::IpAddr(0), 0));
    for (Vex::U32 i = 0; i < 20'000; ++i) {
        route.nexthopIs(Nolt::IpAddr(i));
    }
    RouterState state;
    state.status("red").routeIs(route);
    auto const command = routesCommand(state);
    expectEndsSoon(command, "LRRoute");
    EXPECT_LT(command->lRRouteByName("red")->lRRoute(route.prefix())->nexthop().size(), 10'000U);
}

TEST_F(RouterRender, AnInterruptWithinOneUplinkPortEndsItSoon) {
    LRIpUplinkPortV2 uplink(Nolt::IpGenAddrWithMask::fromString("10.1.0.1/24"), {}, {});
    for (int i = 0; i < 20'000; ++i) {
        uplink.portVlanIs({std::to_string(i), Bridging::VlanIdOrNone(1)});
    }
    RouterState state;
    state.status("red").ipUplinkPortIs(uplink);
    auto const command = detailCommand(state);
    expectEndsSoon(command, "LRDetail");
    EXPECT_TRUE(command->lRDetail("red")->ipUplinkPort().empty());
}

TEST_F(RouterRender, AnInterruptDuringPrintingEndsTheListingEarly) {
    RouterState const state = manyRouters(20'000);
    for (Vex::U32 format : {textFormat, jsonFormat, 3U}) {
        forEachCommand(state, [&](auto const & command) {
            std::string const whole = rendered(command, format);
            auto const [printed, standardOutput] = interruptedWhilePrinting(
                [&](int fd) { command->render(static_cast<Vex::U32>(fd), format, 2); });
            outfmt::clearInterrupt();
            EXPECT_EQ(standardOutput, "exiting on interrupt\n");
            EXPECT_LT(printed.size(), whole.size());
            EXPECT_TRUE(printed == whole.substr(0, printed.size()));
            ASSERT_FALSE(printed.empty());
            if (format == textFormat) {
                EXPECT_EQ(printed.back(), '\n');
            }
        });
    }
}

TEST_F(RouterRender, ACommandCanBeRenderedAgainAfterAnInterrupt) {
    RouterState const state = manyRouters(20'000);
    forEachCommand(state, [](auto const & command) {
        outfmt::requestInterrupt();
        expectInterrupted(command);
    });
    auto const map = mapCommand(state);
    expectEndsSoon(map, "LRMap");
    EXPECT_TRUE(rendered(map) == mapText(state));
    auto const detail = detailCommand(state);
    expectEndsSoon(detail, "LRDetail");
    EXPECT_TRUE(rendered(detail) == detailText(state));
    auto const routes = routesCommand(state);
    expectEndsSoon(routes, "LRRoute");
    EXPECT_TRUE(rendered(routes) == routesText(state));
}

TEST_F(RouterRender, AFullDiskRaisesAWriteError) {
    int const full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    for (RouterState const & state : {RouterState(), manyRouters(5'000)}) {
        for (Vex::U32 format : {textFormat, jsonFormat}) {
            forEachCommand(state, [&](auto const & command) {
                EXPECT_THROW(command->render(static_cast<Vex::U32>(full), format, 2),
                             outfmt::WriteError);
            });
        }
    }
    close(full);
}

TEST_F(RouterRender, ADestroyedCommandLeavesNoModelObject) {
    RouterState const state = manyRouters(20);
    Vex::U64 const before = liveModelObjects();
    for (Vex::U32 format : {textFormat, jsonFormat}) {
        forEachCommand(state, [&](auto const & command) {
            rendered(command, format);
            EXPECT_GT(liveModelObjects(), before + 1);
        });
        EXPECT_EQ(liveModelObjects(), before);
    }
}

TEST_F(RouterRender, AnInterruptedCommandLeavesNoModelObject) {
    RouterState const state = manyRouters(20'000);
    Vex::U64 const before = liveModelObjects();
    expectEndsSoon(mapCommand(state), "LRMap");
    expectEndsSoon(detailCommand(state), "LRDetail");
    expectEndsSoon(routesCommand(state), "LRRoute");
    EXPECT_EQ(liveModelObjects(), before);
}

TEST_F(RouterRender, TheStateIsReleasedWithTheCommand) {
    RouterState const state = manyRouters(2);
    auto const references = [&] {
        return std::vector{state.publishStatus->references(), state.switchInfoDir->references(),
                           state.lRStatusDir->references()};
    };
    auto const before = references();
    forEachCommand(state, [&](auto const & command) {
        rendered(command);
        EXPECT_NE(references(), before);
    });
    EXPECT_EQ(references(), before);
}
